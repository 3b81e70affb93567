select a, count(b) from t group by a having count(b) > 1 limit 3
