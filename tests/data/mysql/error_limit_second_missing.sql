select a from t limit 1,
