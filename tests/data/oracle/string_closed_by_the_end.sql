select a from t where b = 'it\' and c = 'x''
