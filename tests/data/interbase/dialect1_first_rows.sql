select first 5 a from t rows 2
