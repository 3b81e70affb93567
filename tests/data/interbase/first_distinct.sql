select first 3 distinct a from t
