select top 10 percent a from t
