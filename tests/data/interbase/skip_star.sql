select skip 2 * from t
