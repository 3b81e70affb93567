select o.id, c.name from orders o inner join customers c on o.cust_id = c.id where o.amount > 100
