select "Name", "ROWS", x from "My Table" m
