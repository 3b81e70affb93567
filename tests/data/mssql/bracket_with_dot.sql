select [a.b], t.[c.d] from t
