select `straight_join` from t
