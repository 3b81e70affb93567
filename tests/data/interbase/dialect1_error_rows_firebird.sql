select a from t rows 2
