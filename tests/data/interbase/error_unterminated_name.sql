select "abc from t
