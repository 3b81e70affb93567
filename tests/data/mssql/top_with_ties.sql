select top 10 with ties a from t order by a
