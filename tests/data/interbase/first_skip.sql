select first 10 skip 5 a from t
