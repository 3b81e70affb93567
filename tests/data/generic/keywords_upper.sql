select distinct o.id from orders o where o.amount between 1 and 5 and o.note is not null order by o.id
