SELECT a.x FROM a, b WHERE (a.id = b.id (+)) AND a.id = b.id (+) AND a.q = 1
