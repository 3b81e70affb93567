-- Deterministic contents of the Zevrin sample database. The reference tables are listed row by
-- row; orders and order lines are derived from their numbers by fixed arithmetic, so every build
-- produces the same rows. Gaps are deliberate: missing regions, contacts, fax numbers, managers,
-- suppliers and shipping dates give queries NULLs to handle.
PRAGMA foreign_keys = ON;

INSERT INTO regions (region_id, name) VALUES
    (1, 'Northern Highlands'),
    (2, 'Western Coast'),
    (3, 'Central Plains'),
    (4, 'Eastern Valleys'),
    (5, 'Southern Lakes'),
    (6, 'Overseas');

INSERT INTO categories (category_id, name, description) VALUES
    (1, 'Tents', 'Shelters for one to six people, from ultralight to expedition'),
    (2, 'Backpacks', 'Day packs, trekking packs and haul bags'),
    (3, 'Footwear', 'Boots, approach shoes and gaiters'),
    (4, 'Climbing', 'Ropes, harnesses and hardware'),
    (5, 'Cooking', 'Stoves, fuel and cookware'),
    (6, 'Lighting', NULL),
    (7, 'Navigation', 'Maps, compasses and altimeters'),
    (8, 'Clothing', 'Shell, insulation and base layers');

INSERT INTO suppliers (supplier_id, company_name, contact_name, city, country, region_id, phone) VALUES
    (1, 'Brannock Tentworks', 'Ilse Varga', 'Aberdeen', 'United Kingdom', 1, '+44 1224 550101'),
    (2, 'Kestrel Loadcarry', 'Tomas Erlend', 'Bergen', 'Norway', 6, '+47 55 20 11 02'),
    (3, 'Ridgeline Boots', NULL, 'Bolzano', 'Italy', 6, '+39 0471 88 03'),
    (4, 'Verticle Hardware Co.', 'Marguerite Osei', 'Chamonix', 'France', 6, NULL),
    (5, 'Emberline Stoves', 'Pavel Hruska', 'Brno', 'Czech Republic', 4, '+420 5 4321 0905'),
    (6, 'Lumenfield', 'Aiko Tanabe', 'Sapporo', 'Japan', 6, '+81 11 555 0106'),
    (7, 'Cairnmark Instruments', 'Declan Moyes', 'Inverness', 'United Kingdom', 1, '+44 1463 550107'),
    (8, 'Softshell Mills', NULL, 'Porto', 'Portugal', 2, '+351 22 555 0108');

INSERT INTO products (product_id, name, category_id, supplier_id, unit_price, units_in_stock, weight_kg, discontinued) VALUES
    (1, 'Corrie 1 Solo Tent', 1, 1, 289.00, 14, 1.15, 0),
    (2, 'Corrie 2 Tent', 1, 1, 349.00, 22, 1.62, 0),
    (3, 'Basecamp 4 Dome', 1, 1, 615.50, 6, 4.80, 0),
    (4, 'Bivvy Shelter', 1, NULL, 89.90, 40, 0.45, 0),
    (5, 'Kestrel 22 Day Pack', 2, 2, 74.95, 55, 0.62, 0),
    (6, 'Kestrel 45 Trekking Pack', 2, 2, 159.00, 31, 1.40, 0),
    (7, 'Kestrel 70 Expedition Pack', 2, 2, 249.00, 9, 2.25, 0),
    (8, 'Haul Bag 90', 2, NULL, 129.00, 0, 1.90, 1),
    (9, 'Scree Approach Shoe', 3, 3, 129.50, 48, 0.86, 0),
    (10, 'Col Mountain Boot', 3, 3, 279.00, 17, 1.70, 0),
    (11, 'Alpine Gaiters', 3, 3, 39.90, 70, 0.21, 0),
    (12, 'Winter Summit Boot', 3, 3, 429.00, 5, 2.05, 1),
    (13, 'Dynamic Rope 9.8 mm 60 m', 4, 4, 189.00, 26, 3.70, 0),
    (14, 'Alpine Harness', 4, 4, 69.00, 38, 0.36, 0),
    (15, 'Screwgate Carabiner', 4, 4, 11.50, 400, 0.06, 0),
    (16, 'Belay Device', 4, 4, 29.95, 85, 0.08, 0),
    (17, 'Ember Canister Stove', 5, 5, 49.00, 60, 0.09, 0),
    (18, 'Ember Liquid Fuel Stove', 5, 5, 139.00, 12, 0.39, 0),
    (19, 'Titanium Pot 900 ml', 5, 5, 44.50, 33, 0.13, 0),
    (20, 'Gas Canister 230 g', 5, NULL, 6.90, 250, 0.36, 0),
    (21, 'Headlamp 400 lm', 6, 6, 54.00, 76, 0.09, 0),
    (22, 'Headlamp 900 lm', 6, 6, 99.00, 18, 0.14, 0),
    (23, 'Lantern Mini', 6, 6, 24.90, 0, 0.11, 1),
    (24, 'Spare Battery Pack', 6, 6, 19.90, 130, 0.05, 0),
    (25, 'Baseplate Compass', 7, 7, 32.00, 64, 0.03, 0),
    (26, 'Sighting Compass', 7, 7, 58.00, 21, 0.07, 0),
    (27, 'Barometric Altimeter', 7, 7, 119.00, 8, 0.05, 0),
    (28, 'Map Case', 7, NULL, 14.50, 90, 0.08, 0),
    (29, 'Storm Shell Jacket', 8, 8, 239.00, 27, 0.41, 0),
    (30, 'Down Jacket 650', 8, 8, 199.00, 19, 0.38, 0),
    (31, 'Merino Base Layer', 8, 8, 64.00, 84, 0.19, 0),
    (32, 'Softshell Trousers', 8, 8, 89.00, 44, 0.45, 0);

-- The managing director reports to nobody; three regional managers report to her, and each
-- sales representative to one of them.
INSERT INTO employees (employee_id, first_name, last_name, title, manager_id, region_id, birth_date, hire_date, salary, email) VALUES
    (1, 'Helena', 'Marsh', 'Managing Director', NULL, NULL, '1969-04-12', '2008-03-01', 148000.00, 'helena.marsh@example.com'),
    (2, 'Ruben', 'Achterberg', 'Sales Manager North', 1, 1, '1975-09-30', '2011-06-15', 96000.00, 'ruben.achterberg@example.com'),
    (3, 'Sunita', 'Rao', 'Sales Manager West', 1, 2, '1981-01-22', '2013-02-04', 94500.00, 'sunita.rao@example.com'),
    (4, 'Gideon', 'Falk', 'Sales Manager East', 1, 4, NULL, '2015-10-19', 91000.00, 'gideon.falk@example.com'),
    (5, 'Maren', 'Lindqvist', 'Sales Representative', 2, 1, '1990-07-08', '2017-01-09', 58000.00, 'maren.lindqvist@example.com'),
    (6, 'Oskar', 'Brandt', 'Sales Representative', 2, 1, '1988-11-17', '2016-05-23', 61500.00, NULL),
    (7, 'Yusuf', 'Demir', 'Sales Representative', 3, 2, '1993-03-03', '2019-09-02', 54000.00, 'yusuf.demir@example.com'),
    (8, 'Clara', 'Ibsen', 'Sales Representative', 3, 5, '1986-12-25', '2014-08-11', 63000.00, 'clara.ibsen@example.com'),
    (9, 'Tobias', 'Kern', 'Sales Representative', 4, 4, '1995-05-14', '2021-03-15', 51000.00, 'tobias.kern@example.com'),
    (10, 'Lucia', 'Ferreira', 'Sales Representative', 4, 3, '1991-08-29', '2018-11-26', 56500.00, 'lucia.ferreira@example.com'),
    (11, 'Anton', 'Weller', 'Inside Sales Assistant', 3, NULL, '1998-02-10', '2022-07-04', 42000.00, NULL),
    (12, 'Noor', 'Haddad', 'Sales Representative', 2, 6, NULL, '2020-01-13', 57000.00, 'noor.haddad@example.com');

INSERT INTO customers (customer_id, company_name, contact_name, city, country, region_id, phone, fax, credit_limit, created_at) VALUES
    (1, 'Summit Supply Aberdeen', 'Fiona Grant', 'Aberdeen', 'United Kingdom', 1, '+44 1224 550201', NULL, 25000.00, '2019-01-14 09:30:00'),
    (2, 'Glenmore Outdoor', 'Callum Reid', 'Aviemore', 'United Kingdom', 1, '+44 1479 550202', '+44 1479 550203', 15000.00, '2019-02-03 11:05:00'),
    (3, 'Fjordside Sports', 'Ingrid Aas', 'Tromso', 'Norway', 1, '+47 77 60 02 04', NULL, 20000.00, '2019-03-21 14:40:00'),
    (4, 'Harbour Gear', NULL, 'Plymouth', 'United Kingdom', 2, '+44 1752 550205', NULL, 8000.00, '2019-04-08 10:00:00'),
    (5, 'Atlantic Trails', 'Siobhan Kelly', 'Galway', 'Ireland', 2, '+353 91 555 206', '+353 91 555 207', 12000.00, '2019-05-19 16:20:00'),
    (6, 'Costa Verde Aventura', 'Rui Matos', 'Porto', 'Portugal', 2, '+351 22 555 0208', NULL, 10000.00, '2019-06-30 08:45:00'),
    (7, 'Prairie Rambler', 'Hank Olsen', 'Leipzig', 'Germany', 3, '+49 341 555 0209', NULL, 18000.00, '2019-08-12 13:15:00'),
    (8, 'Midland Hikers Coop', 'Priya Shah', 'Leicester', 'United Kingdom', 3, NULL, NULL, NULL, '2019-09-02 09:00:00'),
    (9, 'Danube Vertical', 'Katalin Szabo', 'Budapest', 'Hungary', 4, '+36 1 555 0210', '+36 1 555 0211', 22000.00, '2019-10-27 15:30:00'),
    (10, 'Tatra Base', 'Marek Nowak', 'Zakopane', 'Poland', 4, '+48 18 555 0212', NULL, 9000.00, '2019-12-05 12:10:00'),
    (11, 'Lakeland Ascent', 'Emma Doyle', 'Keswick', 'United Kingdom', 5, '+44 17687 55213', NULL, 14000.00, '2020-01-16 10:25:00'),
    (12, 'Como Montagna', 'Giulia Ferri', 'Como', 'Italy', 5, '+39 031 555 214', NULL, 16000.00, '2020-02-24 17:00:00'),
    (13, 'Trailhead Online', NULL, 'Dublin', 'Ireland', NULL, NULL, NULL, 30000.00, '2020-03-09 08:00:00'),
    (14, 'Highland Bothy Shop', 'Angus Fraser', 'Fort William', 'United Kingdom', 1, '+44 1397 550215', NULL, 6000.00, '2020-04-20 14:05:00'),
    (15, 'Nordkapp Friluft', 'Sigrid Holm', 'Alta', 'Norway', 1, '+47 78 44 02 16', '+47 78 44 02 17', 11000.00, '2020-05-31 11:50:00'),
    (16, 'Cliffs Edge Climbing', 'Owen Price', 'Swansea', 'United Kingdom', 2, '+44 1792 550218', NULL, 7500.00, '2020-07-13 09:40:00'),
    (17, 'Bretagne Rando', 'Yann Le Gall', 'Brest', 'France', 2, '+33 2 98 55 02 19', NULL, 9500.00, '2020-08-22 16:35:00'),
    (18, 'Heartland Expeditions', 'Jonas Becker', 'Kassel', 'Germany', 3, '+49 561 555 0220', NULL, 21000.00, '2020-10-04 13:00:00'),
    (19, 'Steppe & Summit', 'Dana Petrova', 'Brno', 'Czech Republic', 4, '+420 5 4321 0221', NULL, 13000.00, '2020-11-18 10:10:00'),
    (20, 'Carpathian Outfitters', 'Ioan Popescu', 'Brasov', 'Romania', 4, NULL, NULL, 8500.00, '2021-01-07 15:45:00'),
    (21, 'Lake Bled Sport', 'Ana Kovac', 'Bled', 'Slovenia', 5, '+386 4 555 0222', '+386 4 555 0223', 10500.00, '2021-02-19 12:30:00'),
    (22, 'Garda Vertical', 'Marco Bassi', 'Riva del Garda', 'Italy', 5, '+39 0464 555 224', NULL, 17500.00, '2021-04-02 09:20:00'),
    (23, 'Polar Kit Traders', 'Erik Nyberg', 'Lulea', 'Sweden', NULL, '+46 920 555 225', NULL, NULL, '2021-05-15 14:55:00'),
    (24, 'Granite Peak Store', 'Moira Buchanan', 'Dundee', 'United Kingdom', 1, '+44 1382 550226', NULL, 12500.00, '2021-06-28 11:15:00'),
    (25, 'Wavecrest Leisure', NULL, 'Newquay', 'United Kingdom', 2, '+44 1637 550227', NULL, 5000.00, '2021-08-09 08:30:00'),
    (26, 'Heidepfad', 'Lena Vogt', 'Hannover', 'Germany', 3, '+49 511 555 0228', '+49 511 555 0229', 19000.00, '2021-09-20 16:00:00'),
    (27, 'Vltava Trek', 'Jiri Cerny', 'Prague', 'Czech Republic', 4, '+420 2 2455 0230', NULL, 15500.00, '2021-11-01 10:45:00'),
    (28, 'Ohrid Adventures', 'Elena Stojanova', 'Ohrid', 'North Macedonia', 5, NULL, NULL, 4000.00, '2021-12-13 13:35:00'),
    (29, 'Pacific Ridge Imports', 'Kenji Mori', 'Vancouver', 'Canada', 6, '+1 604 555 0231', '+1 604 555 0232', 40000.00, '2022-01-24 09:05:00'),
    (30, 'Andes Gateway', 'Lucia Rojas', 'Mendoza', 'Argentina', 6, '+54 261 555 0233', NULL, 9000.00, '2022-03-07 15:10:00'),
    (31, 'Kiwi Backcountry', 'Tane Parata', 'Queenstown', 'New Zealand', 6, '+64 3 555 0234', NULL, 14500.00, '2022-04-18 12:00:00'),
    (32, 'Rocky Flats Supply', 'Dale Morgan', 'Denver', 'United States', 6, '+1 303 555 0235', NULL, 26000.00, '2022-05-30 08:15:00'),
    (33, 'Cumbria Crag Shop', 'Beth Hodgson', 'Ambleside', 'United Kingdom', 5, '+44 15394 55236', NULL, 7000.00, '2022-07-11 14:25:00'),
    (34, 'Ardennes Plein Air', 'Luc Maes', 'Namur', 'Belgium', 3, '+32 81 555 237', NULL, 11500.00, '2022-08-22 10:50:00'),
    (35, 'Sierra Norte Deportes', 'Carmen Vidal', 'Leon', 'Spain', 2, '+34 987 555 238', '+34 987 555 239', 13500.00, '2022-10-03 17:20:00'),
    (36, 'Balaton Outdoor', NULL, 'Siofok', 'Hungary', 4, NULL, NULL, 3500.00, '2022-11-14 09:45:00');

-- Orders 1 to 420, about two years of trade from 2023-01-02. Every 23rd order was taken without
-- an employee (web shop); the newest orders, and every 31st, are not shipped yet.
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 420)
INSERT INTO orders (order_id, customer_id, employee_id, order_date, required_date, shipped_date, freight, ship_city, ship_region_id)
SELECT i,
       c.customer_id,
       CASE WHEN i % 23 = 0 THEN NULL ELSE (i * 7) % 12 + 1 END,
       date('2023-01-02', '+' || (i * 73 / 42) || ' days'),
       date('2023-01-02', '+' || (i * 73 / 42 + 14) || ' days'),
       CASE WHEN i > 405 OR i % 31 = 0 THEN NULL
            ELSE date('2023-01-02', '+' || (i * 73 / 42 + i % 9 + 1) || ' days') END,
       ROUND(4.5 + ((i * 37) % 5000) / 100.0, 2),
       CASE WHEN i % 17 = 0 THEN NULL ELSE c.city END,
       c.region_id
FROM n JOIN customers c ON c.customer_id = (i * 17) % 36 + 1;

-- One to four lines per order, products spread by fixed steps, the list price of the product,
-- and a discount on some lines.
WITH RECURSIVE k(j) AS (SELECT 1 UNION ALL SELECT j + 1 FROM k WHERE j < 4)
INSERT INTO order_lines (order_id, line_no, product_id, quantity, unit_price, discount)
SELECT o.order_id,
       k.j,
       p.product_id,
       (o.order_id + k.j * 5) % 12 + 1,
       p.unit_price,
       CASE WHEN (o.order_id + k.j) % 6 = 0 THEN 0.1
            WHEN (o.order_id + k.j) % 11 = 0 THEN 0.05
            ELSE 0 END
FROM orders o
JOIN k ON k.j <= o.order_id % 4 + 1
JOIN products p ON p.product_id = (o.order_id * 13 + k.j * 7) % 32 + 1
ORDER BY o.order_id, k.j;
