SELECT "table alias".A AS "Full Name", "table alias".B FROM T "table alias" WHERE "table alias".C = 1
