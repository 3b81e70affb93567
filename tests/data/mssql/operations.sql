select a % b, a & b, a | b, a ^ b from t
