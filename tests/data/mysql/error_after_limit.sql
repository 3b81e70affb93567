select a from t limit 1 order by a
