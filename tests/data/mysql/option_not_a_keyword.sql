select SQL_BUFFER_RESULT a from t
