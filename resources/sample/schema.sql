-- The Zevrin sample database: a small outdoor-equipment trader with regions, suppliers,
-- categories, products, employees (each reporting to a manager), customers, orders and order
-- lines. Column types are the common SQL ones so that every dialect's designer reads them.

CREATE TABLE regions (
    region_id    INTEGER PRIMARY KEY,
    name         VARCHAR(40) NOT NULL UNIQUE
);

CREATE TABLE categories (
    category_id  INTEGER PRIMARY KEY,
    name         VARCHAR(40) NOT NULL UNIQUE,
    description  TEXT
);

CREATE TABLE suppliers (
    supplier_id  INTEGER PRIMARY KEY,
    company_name VARCHAR(60) NOT NULL,
    contact_name VARCHAR(40),
    city         VARCHAR(40) NOT NULL,
    country      VARCHAR(40) NOT NULL,
    region_id    INTEGER REFERENCES regions (region_id),
    phone        VARCHAR(24)
);

CREATE TABLE products (
    product_id     INTEGER PRIMARY KEY,
    name           VARCHAR(60) NOT NULL,
    category_id    INTEGER NOT NULL REFERENCES categories (category_id),
    supplier_id    INTEGER REFERENCES suppliers (supplier_id),
    unit_price     NUMERIC(10, 2) NOT NULL,
    units_in_stock SMALLINT NOT NULL,
    weight_kg      REAL,
    discontinued   BOOLEAN NOT NULL DEFAULT 0
);

CREATE TABLE employees (
    employee_id  INTEGER PRIMARY KEY,
    first_name   VARCHAR(30) NOT NULL,
    last_name    VARCHAR(30) NOT NULL,
    title        VARCHAR(40) NOT NULL,
    manager_id   INTEGER REFERENCES employees (employee_id),
    region_id    INTEGER REFERENCES regions (region_id),
    birth_date   DATE,
    hire_date    DATE NOT NULL,
    salary       NUMERIC(10, 2) NOT NULL,
    email        VARCHAR(60)
);

CREATE TABLE customers (
    customer_id  INTEGER PRIMARY KEY,
    company_name VARCHAR(60) NOT NULL,
    contact_name VARCHAR(40),
    city         VARCHAR(40) NOT NULL,
    country      VARCHAR(40) NOT NULL,
    region_id    INTEGER REFERENCES regions (region_id),
    phone        VARCHAR(24),
    fax          VARCHAR(24),
    credit_limit NUMERIC(12, 2),
    created_at   TIMESTAMP NOT NULL
);

CREATE TABLE orders (
    order_id       INTEGER PRIMARY KEY,
    customer_id    INTEGER NOT NULL REFERENCES customers (customer_id),
    employee_id    INTEGER REFERENCES employees (employee_id),
    order_date     DATE NOT NULL,
    required_date  DATE NOT NULL,
    shipped_date   DATE,
    freight        NUMERIC(8, 2) NOT NULL,
    ship_city      VARCHAR(40),
    ship_region_id INTEGER REFERENCES regions (region_id)
);

CREATE TABLE order_lines (
    order_id     INTEGER NOT NULL REFERENCES orders (order_id),
    line_no      SMALLINT NOT NULL,
    product_id   INTEGER NOT NULL REFERENCES products (product_id),
    quantity     INTEGER NOT NULL,
    unit_price   NUMERIC(10, 2) NOT NULL,
    discount     REAL NOT NULL DEFAULT 0,
    PRIMARY KEY (order_id, line_no)
);

CREATE INDEX orders_customer ON orders (customer_id);
CREATE INDEX orders_employee ON orders (employee_id);
CREATE INDEX order_lines_product ON order_lines (product_id);
CREATE INDEX products_category ON products (category_id);

-- One row per order with its number of lines and its amount after discounts.
CREATE VIEW order_totals AS
SELECT o.order_id, o.customer_id, o.order_date,
       COUNT(l.line_no) AS line_count,
       ROUND(SUM(l.quantity * l.unit_price * (1 - l.discount)), 2) AS amount
FROM orders o
JOIN order_lines l ON l.order_id = o.order_id
GROUP BY o.order_id, o.customer_id, o.order_date;
