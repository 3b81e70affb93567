SELECT Orders.Id, "lower", "MixedCase", Amount$, Code#, value FROM Orders
