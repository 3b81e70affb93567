select a from t rows 2 to 3 with ties
