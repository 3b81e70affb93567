select c, group_concat(b), bit_or(d) from t
