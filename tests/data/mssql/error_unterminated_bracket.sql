select [a from t
