SELECT a + 1, Count(t.b) FROM t
