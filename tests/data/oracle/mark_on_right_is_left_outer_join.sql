SELECT a.x, b.y FROM a, b WHERE a.id = b.id (+)
