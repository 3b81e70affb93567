select a from t where b = "x y"
