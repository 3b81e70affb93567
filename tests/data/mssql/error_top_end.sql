select top
