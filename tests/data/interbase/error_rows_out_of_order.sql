select a from t rows 1 by 2 to 3
