select a from t rows 5
