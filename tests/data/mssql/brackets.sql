select [my col], [select], t.[order] from [dbo].[my table] t where [x] = 1
