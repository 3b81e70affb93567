select a from t rows 4 with ties
