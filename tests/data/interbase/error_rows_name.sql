select a from t rows n
