select t.a, u.b from t inner join u on t.a != u.b
