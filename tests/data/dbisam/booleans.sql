select a from t where b = true and c <> FALSE
