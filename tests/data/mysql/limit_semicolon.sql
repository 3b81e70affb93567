select a from t limit 7;
