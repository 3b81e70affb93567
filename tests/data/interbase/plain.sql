select a, b from t
