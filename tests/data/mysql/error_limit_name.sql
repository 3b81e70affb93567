select a from t limit n
