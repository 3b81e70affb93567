select a from t where b = 'it\'s' and c = 'x\'
