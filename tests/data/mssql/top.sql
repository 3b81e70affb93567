select top 10 a from t
