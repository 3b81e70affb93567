select @@version, #t.x from #t where x = @v
