select a from t limit 5
