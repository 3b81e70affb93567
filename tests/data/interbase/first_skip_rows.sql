select first 1 skip 2 distinct a from t group by a rows 3 to 4
