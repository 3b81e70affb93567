select t.a, count(*) as n from t group by t.a having count(*) > 1 rows 1 to 2 percent
