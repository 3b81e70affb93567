select a from t where a > 1 order by a desc limit 1, 2
