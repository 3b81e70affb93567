SELECT a.x FROM a, b WHERE a.id = b.id (+) AND (a.z = 1 OR a.w = 2)
