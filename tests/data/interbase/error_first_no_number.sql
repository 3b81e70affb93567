select first a from t
