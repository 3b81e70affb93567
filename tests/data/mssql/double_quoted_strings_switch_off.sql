select a from t where b = "x y" or c = 'it''s'
