select "my col", "a.b" from "dbo"."my table"
