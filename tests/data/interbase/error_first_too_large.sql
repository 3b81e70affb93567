select first 2147483648 a from t
