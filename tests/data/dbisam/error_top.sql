select top 5 a from t
