select "a" from t
