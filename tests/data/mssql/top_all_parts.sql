select all top 1 percent with ties a from t order by a
