select top a from t
