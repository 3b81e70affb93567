select `my col`, `select`, t.`a.b`, `x``y` from `my db`.`my table` t where `order` = 1
