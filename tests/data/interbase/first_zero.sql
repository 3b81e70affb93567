select first 0 a from t
