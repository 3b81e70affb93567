SELECT p.name, p.price * 1.077 AS price_with_tax, s.name supplier, cat.title
FROM products p, suppliers s, categories cat
WHERE p.supplier_id = s.id AND p.category_id = cat.id
  AND p.units_in_stock BETWEEN 1 AND 500 AND cat.title NOT IN ('Archive', 'Samples')
ORDER BY cat.title, p.name
