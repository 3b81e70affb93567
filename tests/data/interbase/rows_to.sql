select a from t rows 1 to 5
