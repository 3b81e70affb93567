SELECT a.x FROM a, b WHERE a.id = b.id (+) AND a.z = 1 FETCH FIRST 2 ROWS ONLY
