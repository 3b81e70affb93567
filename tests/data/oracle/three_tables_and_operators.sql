SELECT a.x FROM a, b, c WHERE b.k != c.k (+) AND a.id (+) = b.id AND a.n >= c.n
