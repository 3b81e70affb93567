select a from t limit 5, 18446744073709551615
