select first 5 skip 1 a from t
