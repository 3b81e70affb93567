select first 1 skip 2 a from t rows 3 with ties
