SELECT a.x FROM a LEFT JOIN b ON a.id = b.id (+)
