SELECT a.x FROM a, b WHERE NOT a.id = b.id (+)
