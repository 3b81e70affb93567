select a from t limit
