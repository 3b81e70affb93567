SELECT a.x FROM a WHERE a.x ANY (1, 2) AND a.y ALL (3) AND a.z EXISTS (4)
