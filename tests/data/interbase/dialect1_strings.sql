select a from t where b = "x y" and c = 'z'
