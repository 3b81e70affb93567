select a, runsum(b) from t
