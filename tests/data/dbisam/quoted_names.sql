select "my col", "select", t."a b" from "my table" t where "x" = 1
