select top 5 distinct a from t
