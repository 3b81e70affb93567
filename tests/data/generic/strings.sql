SELECT * FROM T WHERE T.A = 'it''s' AND T.B = '' AND T.C = 'a "b" c'
