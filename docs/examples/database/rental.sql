CREATE ROLE counter;
CREATE ROLE workshop;
CREATE ROLE anna LOGIN IN ROLE counter;
CREATE ROLE max LOGIN IN ROLE workshop;

CREATE TABLE station (station_id int PRIMARY KEY, city text);
CREATE TABLE bike (bike_id int PRIMARY KEY, kind text, bought_for numeric(8, 2));
COMMENT ON COLUMN bike.bought_for IS 'Without tax';
CREATE TABLE rental (
  rental_id int PRIMARY KEY,
  bike_id int NOT NULL REFERENCES bike,
  taken_from int NOT NULL REFERENCES station, taken_at timestamptz,
  fee numeric(8, 2)
);

GRANT SELECT ON rental TO counter;
GRANT SELECT (bike_id, kind) ON bike TO counter;
GRANT SELECT ON bike TO workshop;
GRANT SELECT ON station TO PUBLIC;
