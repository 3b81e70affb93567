select first 1 a from t rows 2
