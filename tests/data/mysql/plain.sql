select a, b from t where a = 1 order by b
