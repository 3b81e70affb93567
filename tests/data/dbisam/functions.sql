select upper(a), substring(b from 1 for 2) from t
