select a from t rows 1 order by a
