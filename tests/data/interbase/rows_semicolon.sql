select a from t rows 1;
