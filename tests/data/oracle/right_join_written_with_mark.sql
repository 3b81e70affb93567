SELECT o.id, c.name FROM orders o RIGHT JOIN customers c ON o.cust_id = c.id
