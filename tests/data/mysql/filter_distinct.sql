select distinct a from t
