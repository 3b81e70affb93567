select count(*), sum(o.amount), my_func(o.amount) from orders o
