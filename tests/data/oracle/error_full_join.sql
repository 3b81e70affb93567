SELECT a.x FROM a FULL OUTER JOIN b ON a.id = b.id
