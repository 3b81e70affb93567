select a from t where b = true
