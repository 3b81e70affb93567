select a from t rows 0 to 5
