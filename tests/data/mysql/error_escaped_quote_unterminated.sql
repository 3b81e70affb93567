select a from t where b = 'abc\' and c = 1
