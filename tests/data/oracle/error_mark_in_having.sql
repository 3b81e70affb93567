SELECT a.x FROM a, b GROUP BY a.x HAVING a.x = b.y (+)
