select count(*), sum(o.amount), avg(o.amount) from orders o
