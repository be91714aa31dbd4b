-- Who may read what in a small shop; what each role sees stands in PostgresImportTest.cpp.
-- Roles belong to the whole server, so this is run once.
CREATE ROLE reader;
COMMENT ON ROLE reader IS 'Reads names';
CREATE ROLE clerk;
GRANT reader TO clerk;
CREATE ROLE ann LOGIN;
GRANT clerk TO ann;
CREATE ROLE bob LOGIN NOINHERIT;
GRANT clerk TO bob;
CREATE ROLE carl LOGIN;
GRANT clerk TO carl;
CREATE ROLE keeper;
CREATE ROLE olga LOGIN;
GRANT keeper TO olga;
CREATE ROLE auditor LOGIN;
GRANT pg_read_all_data TO auditor;
CREATE ROLE outsider;
CREATE ROLE oscar LOGIN;
GRANT outsider TO oscar;
CREATE ROLE insider LOGIN;
GRANT outsider TO insider;
CREATE ROLE stranger LOGIN;
CREATE ROLE writer;
CREATE ROLE " ann" LOGIN;
CREATE ROLE locked LOGIN PASSWORD 'ge;he}im "100%+" x';

REVOKE CONNECT ON DATABASE shop FROM PUBLIC;
GRANT CONNECT ON DATABASE shop TO ann, bob, carl, keeper, auditor, outsider, locked, insider, " ann";

CREATE SCHEMA sales;
COMMENT ON SCHEMA sales IS 'What is sold';
CREATE SCHEMA vault;
CREATE SCHEMA empty;
GRANT USAGE ON SCHEMA sales TO reader, writer;
GRANT USAGE ON SCHEMA vault TO insider;

CREATE DOMAIN sales.amount AS numeric(10, 2);
CREATE DOMAIN sales.price AS sales.amount CHECK (VALUE >= 0);
CREATE TYPE sales.state AS ENUM ('new', 'paid');

CREATE TABLE sales.customer (
  id bigint PRIMARY KEY,
  name varchar(40) NOT NULL,
  dropped int,
  credit sales.price,
  tags text[]
);
ALTER TABLE sales.customer DROP COLUMN dropped;
COMMENT ON TABLE sales.customer IS 'Who buys
"here" 😀';
COMMENT ON COLUMN sales.customer.credit IS 'What we lend';
CREATE TABLE sales."order" (
  id int PRIMARY KEY,
  customer_id bigint REFERENCES sales.customer,
  placed timestamptz NOT NULL DEFAULT now(),
  state sales.state,
  total money CHECK (total > 0::money)
);
CREATE TABLE sales.note (order_id int PRIMARY KEY REFERENCES sales."order", "text]" text);
ALTER TABLE sales.note OWNER TO keeper;
GRANT USAGE ON SCHEMA sales TO keeper;
CREATE TABLE sales.log (at date, said text) PARTITION BY RANGE (at);
CREATE TABLE sales.log_1 PARTITION OF sales.log FOR VALUES FROM ('2000-01-01') TO ('2001-01-01');
CREATE VIEW sales.debtors AS SELECT id, name FROM sales.customer WHERE credit > 0;
CREATE MATERIALIZED VIEW sales.totals AS SELECT customer_id, sum(total) AS total
  FROM sales."order" GROUP BY customer_id;
CREATE TABLE vault.salary (id int PRIMARY KEY, name text, amount float8);
CREATE TABLE public.notice (id int, said text);

GRANT SELECT (id, name) ON sales.customer TO reader;
GRANT SELECT ON sales."order" TO clerk;
GRANT SELECT (credit) ON sales.customer TO carl;
GRANT SELECT ON vault.salary TO outsider;
GRANT INSERT, UPDATE ON sales."order" TO writer;
GRANT SELECT ON public.notice TO PUBLIC;
CREATE ROLE dunning;
GRANT USAGE ON SCHEMA sales TO dunning;
GRANT SELECT ON sales.debtors TO dunning;

ALTER TABLE sales."order" ENABLE ROW LEVEL SECURITY;
CREATE POLICY mine ON sales."order" USING (state = 'new');
