SELECT Orders.Id, "MixedCase", _hidden, Upper AS "Total Sum" FROM Orders
