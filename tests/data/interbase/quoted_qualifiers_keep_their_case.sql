select "my t".x, "select". t."a b" from "my t", "select".t
