select skip 1 a from t
