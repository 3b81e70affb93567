select a from t rows 3 by 2 percent
