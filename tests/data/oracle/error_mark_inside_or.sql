SELECT a.x FROM a, b WHERE a.id = b.id (+) OR a.z = 1
