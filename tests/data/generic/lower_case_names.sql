select c.name, c.city from customers c where c.city like 'B%' order by c.name
