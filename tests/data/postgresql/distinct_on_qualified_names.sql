SELECT DISTINCT ON (o.Cust, "My T".b) o.Id, "My T".b FROM Orders o, "My T"
