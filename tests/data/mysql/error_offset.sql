select a from t limit 1 offset 2
