SELECT "my table"."first name", "my table"."order", "Select" FROM "my table"
