select distinct top 5 a from t
