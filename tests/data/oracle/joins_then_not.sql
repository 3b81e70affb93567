SELECT a.x FROM a, b WHERE a.id = b.id (+) AND NOT a.z = 1
