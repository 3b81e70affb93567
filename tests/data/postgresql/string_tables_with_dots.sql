SELECT * FROM '.x' X, 'a..b'
