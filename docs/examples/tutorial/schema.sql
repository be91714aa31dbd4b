CREATE TABLE station (station_id INTEGER PRIMARY KEY, city VARCHAR(40));
CREATE TABLE bike (bike_id INTEGER PRIMARY KEY, kind VARCHAR(20), bought_for DECIMAL(8,2));
CREATE TABLE rental (
  rental_id INTEGER PRIMARY KEY,
  bike_id INTEGER REFERENCES bike,
  taken_from INTEGER REFERENCES station, taken_at TIMESTAMP,
  brought_to INTEGER REFERENCES station, returned_at TIMESTAMP,
  fee DECIMAL(8,2)
);
