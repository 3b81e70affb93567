SELECT a.x FROM a WHERE a.id (+) = 1
