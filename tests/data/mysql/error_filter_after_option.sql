select high_priority distinct a from t
