select all a from t
