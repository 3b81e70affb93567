SELECT o.id, c.name FROM orders o LEFT JOIN customers c ON o.cust_id = c.id
