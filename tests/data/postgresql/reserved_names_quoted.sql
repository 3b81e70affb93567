SELECT t."count", t."select", "now" FROM "Tab" t
