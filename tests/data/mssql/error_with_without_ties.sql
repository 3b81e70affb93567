select top 5 with a from t
