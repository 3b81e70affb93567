select distinct top 3 with ties a from t order by a
