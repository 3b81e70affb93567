SELECT Orders.Id, "lower", Amount$, Code#, "ROW" FROM Orders
