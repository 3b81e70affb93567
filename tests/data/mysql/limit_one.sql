select a from t limit 10
