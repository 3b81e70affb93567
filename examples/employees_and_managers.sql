SELECT DISTINCT e.last_name, m.last_name AS manager, r.description
FROM employees e
  INNER JOIN employees m ON e.manager_id = m.id
  LEFT OUTER JOIN regions r ON e.region_id = r.id
WHERE NOT e.last_name LIKE 'Test%'
