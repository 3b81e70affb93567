select a from t where a containing 'x' or b starting with 'y'
