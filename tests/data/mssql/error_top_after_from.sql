select a from t top 5
