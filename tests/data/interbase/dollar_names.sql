select rdb$relation_name from rdb$relations
