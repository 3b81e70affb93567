SELECT o.id, c.name FROM orders o INNER JOIN customers c ON o.cust_id = c.id WHERE o.total > 100
