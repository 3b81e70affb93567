select a from t where b = 'it\'s' and c = "say \"hi\"" and d = 'a\\' and e = 'a\''
