select c.name, c.city, count(o.id) as orders, sum(o.amount) as total
from customers c
  left join orders o on o.customer_id = c.id
where c.country = 'CH' and (o.amount > 100 or o.amount is null)
group by c.name, c.city
having count(o.id) > 1
order by total desc, c.name
