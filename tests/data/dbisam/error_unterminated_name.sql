select "a from t
