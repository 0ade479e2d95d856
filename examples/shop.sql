-- A small shop: who buys what from whom, and how it reaches them.
--
-- The build runs this script statement by statement into an SQLite file
-- (examples/shop.sqlite in the build tree); the tests also load it into a
-- PostgreSQL database, where vm20_makedb maps the few SQLite-only words
-- (PRAGMA, DATETIME, BLOB, MONEY, REAL, x'..', date(), datetime()). Every
-- row is computed from its position, so two builds give the same data. In
-- SQLite dates are ISO text ('YYYY-MM-DD', 'YYYY-MM-DD hh:mm:ss') and money
-- is REAL. Booleans are written TRUE and FALSE, which SQLite stores as 1 and 0.
--
-- The names mix apostrophes and non-ASCII letters on purpose, some columns are
-- left NULL, and one table name holds a blank, so that quoting gets exercised
-- wherever this database is used.

PRAGMA foreign_keys = ON;

CREATE TABLE regions (
  region_id   INTEGER PRIMARY KEY,
  name        VARCHAR(30) NOT NULL
);

CREATE TABLE categories (
  category_id INTEGER PRIMARY KEY,
  name        VARCHAR(30) NOT NULL,
  description TEXT
);

CREATE TABLE suppliers (
  supplier_id  INTEGER PRIMARY KEY,
  company_name VARCHAR(60) NOT NULL,
  contact_name VARCHAR(40),
  city         VARCHAR(30),
  country      VARCHAR(30),
  phone        VARCHAR(24)
);

CREATE TABLE shippers (
  shipper_id   INTEGER PRIMARY KEY,
  company_name VARCHAR(40) NOT NULL,
  phone        VARCHAR(24),
  pickup_time  TIME
);

CREATE TABLE products (
  product_id        INTEGER PRIMARY KEY,
  name              VARCHAR(60) NOT NULL,
  category_id       INTEGER NOT NULL REFERENCES categories (category_id),
  supplier_id       INTEGER REFERENCES suppliers (supplier_id),
  quantity_per_unit VARCHAR(30),
  unit_price        MONEY NOT NULL,
  units_in_stock    SMALLINT NOT NULL DEFAULT 0,
  discontinued      BOOLEAN NOT NULL DEFAULT FALSE,
  weight_kg         NUMERIC(8,3),
  added_on          DATE NOT NULL
);

CREATE TABLE customers (
  customer_id  INTEGER PRIMARY KEY,
  company_name VARCHAR(60) NOT NULL,
  contact_name VARCHAR(40),
  email        VARCHAR(60),
  phone        VARCHAR(24),
  city         VARCHAR(30),
  country      VARCHAR(30),
  country_code CHAR(2),
  region_id    INTEGER REFERENCES regions (region_id),
  since        DATE,
  credit_limit MONEY
);

CREATE TABLE employees (
  employee_id INTEGER PRIMARY KEY,
  first_name  VARCHAR(20) NOT NULL,
  last_name   VARCHAR(30) NOT NULL,
  title       VARCHAR(30),
  birth_date  DATE,
  hire_date   DATE NOT NULL,
  region_id   INTEGER REFERENCES regions (region_id),
  salary      MONEY,
  photo       BLOB
);

CREATE TABLE orders (
  order_id      INTEGER PRIMARY KEY,
  customer_id   INTEGER NOT NULL REFERENCES customers (customer_id),
  employee_id   INTEGER NOT NULL REFERENCES employees (employee_id),
  shipper_id    INTEGER REFERENCES shippers (shipper_id),
  order_date    DATETIME NOT NULL,
  required_date DATE,
  shipped_date  DATE,
  status        VARCHAR(12) NOT NULL,
  freight       MONEY,
  ship_city     VARCHAR(30),
  ship_country  VARCHAR(30),
  comment       TEXT
);

CREATE TABLE "Order Lines" (
  order_id   INTEGER NOT NULL REFERENCES orders (order_id),
  line_no    SMALLINT NOT NULL,
  product_id INTEGER NOT NULL REFERENCES products (product_id),
  quantity   INTEGER NOT NULL,
  unit_price MONEY NOT NULL,
  discount   REAL NOT NULL DEFAULT 0,
  PRIMARY KEY (order_id, line_no)
);

CREATE TABLE payments (
  payment_id INTEGER PRIMARY KEY,
  order_id   INTEGER NOT NULL REFERENCES orders (order_id),
  paid_at    TIMESTAMP NOT NULL,
  amount     MONEY NOT NULL,
  method     VARCHAR(12) NOT NULL
);

-- A return names the order line it sends back by both key columns.
CREATE TABLE returns (
  return_id   INTEGER PRIMARY KEY,
  order_id    INTEGER NOT NULL,
  line_no     SMALLINT NOT NULL,
  quantity    INTEGER NOT NULL,
  reason      VARCHAR(60),
  returned_on DATE NOT NULL,
  FOREIGN KEY (order_id, line_no) REFERENCES "Order Lines" (order_id, line_no)
);

CREATE VIEW order_totals AS
  SELECT order_id,
         COUNT(*) AS line_count,
         ROUND(SUM(quantity * unit_price * (1 - discount)), 2) AS total
  FROM "Order Lines"
  GROUP BY order_id;

-- ---------------------------------------------------------------------------
-- Reference data, written out by hand.

INSERT INTO regions (region_id, name) VALUES
  (1, 'North'), (2, 'South'), (3, 'East'), (4, 'West'),
  (5, 'Île-de-France'), (6, 'Nordjylland');

INSERT INTO categories (category_id, name, description) VALUES
  (1, 'Beverages',   'Soft drinks, coffees, teas, beers and ales'),
  (2, 'Condiments',  'Sweet and savoury sauces, relishes, spreads and seasonings'),
  (3, 'Confections', 'Desserts, candies and sweet breads'),
  (4, 'Dairy',       'Cheeses'),
  (5, 'Grains',      'Breads, crackers, pasta and cereal'),
  (6, 'Meat',        'Prepared meats'),
  (7, 'Produce',     NULL),
  (8, 'Seafood',     'Seaweed and fish; "fresh" means caught this week');

INSERT INTO suppliers (supplier_id, company_name, contact_name, city, country, phone) VALUES
  (1,  'Müller Feinkost GmbH',     'Jürgen Müller',    'München',   'Germany',     '+49 89 123456'),
  (2,  'O''Brien & Sons',          'Siobhán O''Brien', 'Cork',      'Ireland',     '+353 21 555 0101'),
  (3,  'Øster Fisk A/S',           'Øyvind Øster',     'Ålborg',    'Denmark',     '+45 98 12 34 56'),
  (4,  'José''s Cantina',          'José Álvarez',     'Sevilla',   'Spain',       NULL),
  (5,  'Pâtisserie Lefèvre',       'Chloé Lefèvre',    'Lyon',      'France',      '+33 4 72 00 00 00'),
  (6,  'Nordic Grains AB',         'Åsa Lindqvist',    'Göteborg',  'Sweden',      '+46 31 70 70 70'),
  (7,  'Great Lakes Dairy',        'Mary-Kate D''Angelo', 'Chicago', 'USA',        '+1 312 555 0199'),
  (8,  'Tokyo Traders',            'Yoshi Nagase',     'Tokyo',     'Japan',       '+81 3 3555 5011'),
  (9,  'Cooperativa de Quesos',    'Antonio del Valle', 'Oviedo',   'Spain',       '+34 985 551 234'),
  (10, 'Kowalski Wędliny',         'Łukasz Kowalski',  'Kraków',    'Poland',      '+48 12 555 12 12'),
  (11, 'Zoë''s Garden',            'Zoë Brontë',       'Bristol',   'UK',          '+44 117 555 0123'),
  (12, 'Pavlova, Ltd.',            NULL,               'Melbourne', 'Australia',   '+61 3 555 5555');

INSERT INTO shippers (shipper_id, company_name, phone, pickup_time) VALUES
  (1, 'Speedy Express',    '+1 503 555 9831', '09:30:00'),
  (2, 'United Package',    '+1 503 555 3199', '14:00:00'),
  (3, 'Federal Shipping',  '+1 503 555 9931', NULL),
  (4, 'Schnell & Günstig', '+49 30 555 77 77', '07:45:00');

INSERT INTO employees (employee_id, first_name, last_name, title, birth_date, hire_date, region_id, salary, photo) VALUES
  (1,  'Nancy',    'Davolio',    'Sales Representative',  '1978-12-08', '2012-05-01', 1, 3200.00, NULL),
  (2,  'Andrew',   'Fuller',     'Vice President, Sales', '1962-02-19', '2010-08-14', NULL, 6100.00, NULL),
  (3,  'Janet',    'Leverling',  'Sales Representative',  '1983-08-30', '2014-04-01', 2, 3050.00, NULL),
  (4,  'Margaret', 'Peacock',    'Sales Representative',  '1967-09-19', '2013-05-03', 3, 3150.00, NULL),
  (5,  'Steven',   'Buchanan',   'Sales Manager',         '1975-03-04', '2013-10-17', 4, 4800.00, NULL),
  (6,  'Michael',  'Suyama',     'Sales Representative',  '1983-07-02', '2016-10-17', 4, 2900.00, NULL),
  (7,  'Robert',   'King',       'Sales Representative',  '1980-05-29', '2017-01-02', 5, 2950.00, NULL),
  (8,  'Laura',    'Callahan',   'Inside Sales Coordinator', '1978-01-09', '2018-03-05', NULL, 2700.00, NULL),
  (9,  'Anne',     'Dodsworth',  'Sales Representative',  '1986-01-27', '2019-11-15', 6, 2850.00, NULL),
  (10, 'Seán',     'O''Connor',  'Sales Representative',  NULL,         '2021-02-01', 1, 2800.00, NULL),
  (11, 'Renée',    'Müller',     'Sales Representative',  '1990-06-21', '2022-06-01', 5, 2750.00, NULL),
  (12, 'Bjørn',    'Øster',      'Warehouse Manager',     '1971-11-11', '2011-09-01', 6, 3900.00, x'89504E470D0A1A0A');

-- ---------------------------------------------------------------------------
-- Generated data. Arithmetic on the row number stands in for chance, so that
-- every build produces the same rows.

-- 80 products: ten styles of each category's staple.
INSERT INTO products (product_id, name, category_id, supplier_id, quantity_per_unit,
                      unit_price, units_in_stock, discontinued, weight_kg, added_on)
WITH styles (s, style) AS (
       VALUES (0, 'Classic'), (1, 'Organic'), (2, 'Smoked'), (3, 'Spicy'), (4, 'Golden'),
              (5, 'Crème'), (6, 'Nordic'), (7, 'Rustic'), (8, 'Grandma''s'), (9, 'Señor')),
     staples (c, staple, unit) AS (
       VALUES (1, 'Tea', '20 bags'), (2, 'Mustard', '12 jars'), (3, 'Chocolate', '10 bars'),
              (4, 'Cheese', '1 kg'), (5, 'Bread', '6 loaves'), (6, 'Sausage', '500 g'),
              (7, 'Apples', '5 kg box'), (8, 'Herring', '8 tins'))
SELECT s * 8 + c,
       style || ' ' || staple,
       c,
       CASE WHEN (s * 8 + c) % 17 = 0 THEN NULL ELSE ((s * 8 + c) * 7) % 12 + 1 END,
       CASE WHEN s = 4 THEN NULL ELSE unit END,
       ROUND(2.5 + (((s * 8 + c) * 37) % 900) / 10.0, 2),
       ((s * 8 + c) * 53) % 120,
       CASE WHEN (s * 8 + c) % 13 = 0 THEN TRUE ELSE FALSE END,
       CASE WHEN c IN (1, 3) THEN NULL ELSE ROUND(0.25 + ((s * 8 + c) * 11 % 40) / 8.0, 3) END,
       date('2020-01-06', '+' || ((s * 8 + c) * 9) || ' days')
FROM styles, staples;

-- 200 customers: contacts from a first and a last name, companies named
-- after the contact, spread over ten cities.
INSERT INTO customers (customer_id, company_name, contact_name, email, phone, city, country,
                       country_code, region_id, since, credit_limit)
WITH RECURSIVE seq (n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM seq WHERE n < 200),
     firsts (i, fname) AS (
       VALUES (0, 'José'), (1, 'Anna'), (2, 'Øyvind'), (3, 'Zoë'), (4, 'Liam'), (5, 'Chloé'),
              (6, 'Mateo'), (7, 'Ingrid'), (8, 'Noah'), (9, 'Siobhán'), (10, 'Ümit'), (11, 'Maria')),
     lasts (j, lname) AS (
       VALUES (0, 'O''Brien'), (1, 'Müller'), (2, 'Øster'), (3, 'García'), (4, 'Smith'),
              (5, 'Nguyen'), (6, 'Kowalski'), (7, 'D''Angelo'), (8, 'Brontë'), (9, 'Larsen'),
              (10, 'Dubois'), (11, 'Yılmaz')),
     kinds (k, kind) AS (
       VALUES (0, 'Trading'), (1, 'Markt'), (2, '& Co.'), (3, 'Épicerie'), (4, 'Deli'),
              (5, 'Foods'), (6, 'Handel'), (7, 'Bistro')),
     places (p, city, country, code, region) AS (
       VALUES (0, 'Berlin', 'Germany', 'DE', 3), (1, 'Paris', 'France', 'FR', 5),
              (2, 'Aarhus', 'Denmark', 'DK', 6), (3, 'Madrid', 'Spain', 'ES', 2),
              (4, 'London', 'UK', 'GB', 4), (5, 'Dublin', 'Ireland', 'IE', 4),
              (6, 'Oslo', 'Norway', 'NO', 1), (7, 'Zürich', 'Switzerland', 'CH', NULL),
              (8, 'México D.F.', 'Mexico', 'MX', NULL), (9, 'Montréal', 'Canada', 'CA', 1))
SELECT n,
       lname || ' ' || kind,
       fname || ' ' || lname,
       CASE WHEN n % 9 = 0 THEN NULL ELSE 'customer.' || n || '@example.com' END,
       CASE WHEN n % 7 = 0 THEN NULL ELSE '+' || (10 + p) || ' ' || (5550000 + n * 37) END,
       city, country, code, region,
       date('2015-03-01', '+' || ((n * 97) % 2900) || ' days'),
       CASE WHEN n % 11 = 0 THEN NULL ELSE 500 * (1 + (n * 13) % 20) END
FROM seq
JOIN firsts ON i = n % 12
JOIN lasts ON j = (n / 12 + n * 5) % 12
JOIN kinds ON k = (n * 3) % 8
JOIN places ON p = (n * 7) % 10;

-- 1200 orders over three years, in date order; the youngest are still open.
INSERT INTO orders (order_id, customer_id, employee_id, shipper_id, order_date, required_date,
                    shipped_date, status, freight, ship_city, ship_country, comment)
WITH RECURSIVE seq (n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM seq WHERE n < 1200),
     placed (n, customer, day, st) AS (
       SELECT n, (n * 7919) % 200 + 1, (n * 1095) / 1200,
              CASE WHEN n % 41 = 0 THEN 'cancelled'
                   WHEN n > 1170 THEN 'new'
                   WHEN n > 1140 THEN 'paid'
                   WHEN n > 1100 THEN 'shipped'
                   ELSE 'delivered' END
       FROM seq)
SELECT n, customer, (n * 31) % 12 + 1,
       CASE WHEN st IN ('new', 'cancelled') THEN NULL ELSE (n * 3) % 4 + 1 END,
       datetime('2022-01-03 08:00:00', '+' || day || ' days', '+' || ((n * 97) % 600) || ' minutes'),
       date('2022-01-03', '+' || (day + 14) || ' days'),
       CASE WHEN st IN ('shipped', 'delivered') THEN date('2022-01-03', '+' || (day + 1 + n % 6) || ' days') END,
       st,
       ROUND(5 + ((n * 53) % 2000) / 10.0, 2),
       (SELECT city FROM customers WHERE customer_id = customer),
       (SELECT country FROM customers WHERE customer_id = customer),
       CASE n % 50
         WHEN 3 THEN 'Customer''s request: leave at the door'
         WHEN 17 THEN 'Bitte nicht knicken – Glaswaren'
         WHEN 29 THEN 'Entrega rápida, por favor'
         WHEN 44 THEN 'Call before delivery; gate code 1234'
       END
FROM placed;

-- One to four lines per order at the product's list price.
INSERT INTO "Order Lines" (order_id, line_no, product_id, quantity, unit_price, discount)
WITH lines (k) AS (VALUES (1), (2), (3), (4))
SELECT o.order_id, k, p.product_id,
       1 + (o.order_id * k * 17) % 24,
       p.unit_price,
       CASE WHEN (o.order_id + k) % 10 = 0 THEN 0.1
            WHEN (o.order_id + k) % 7 = 0 THEN 0.05
            ELSE 0 END
FROM orders o
JOIN lines ON k <= 1 + (o.order_id * 7) % 4
JOIN products p ON p.product_id = (o.order_id * 13 + k * 29) % 80 + 1
ORDER BY o.order_id, k;

-- Every order that was paid has one payment of its total plus freight.
INSERT INTO payments (payment_id, order_id, paid_at, amount, method)
SELECT ROW_NUMBER() OVER (ORDER BY o.order_id),
       o.order_id,
       datetime(o.order_date, '+' || (1 + o.order_id % 4) || ' days', '+' || (o.order_id % 300) || ' minutes'),
       ROUND(t.total + o.freight, 2),
       CASE o.order_id % 3 WHEN 0 THEN 'card' WHEN 1 THEN 'invoice' ELSE 'cash' END
FROM orders o
JOIN order_totals t ON t.order_id = o.order_id
WHERE o.status IN ('paid', 'shipped', 'delivered')
ORDER BY o.order_id;

-- A few delivered lines come back.
INSERT INTO returns (return_id, order_id, line_no, quantity, reason, returned_on)
SELECT ROW_NUMBER() OVER (ORDER BY l.order_id, l.line_no),
       l.order_id, l.line_no, 1 + l.quantity % 3,
       CASE (l.order_id + l.line_no) % 4
         WHEN 0 THEN 'Damaged in transit'
         WHEN 1 THEN 'Wrong item'
         WHEN 2 THEN NULL
         ELSE 'Customer''s change of mind' END,
       date(o.shipped_date, '+' || (3 + l.order_id % 20) || ' days')
FROM "Order Lines" l
JOIN orders o ON o.order_id = l.order_id
WHERE o.status = 'delivered' AND (l.order_id * 3 + l.line_no) % 47 = 0
ORDER BY l.order_id, l.line_no;
