select distinctrow a from t
