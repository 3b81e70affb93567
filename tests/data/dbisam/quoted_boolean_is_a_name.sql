select "TRUE" from t
