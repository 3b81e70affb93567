SELECT a.x FROM a WHERE a.id = a.parent (+)
