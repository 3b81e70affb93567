select distinct first 1 a from t
