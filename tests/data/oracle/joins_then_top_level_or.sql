SELECT a.x FROM a, b WHERE a.z = 1 OR a.w = 2 AND a.id = b.id
