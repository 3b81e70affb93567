SELECT a.x FROM a WHERE a.x <> 1
