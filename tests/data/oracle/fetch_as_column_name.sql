SELECT fetch FROM a
