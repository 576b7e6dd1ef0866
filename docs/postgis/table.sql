-- A table for the CSV files of Orvandi: the columns in their order.
create extension if not exists postgis;
create table records (
  time timestamptz,
  time_of_day time,
  latitude double precision,
  longitude double precision,
  distance_km real,
  bearing_from_tx_deg real,
  height_m real,
  raw smallint,
  s text,
  uv real,
  mv_per_m real,
  dbuv_per_m real,
  dbm real,
  rig text,
  mode text,
  frequency_khz double precision,
  antenna text,
  tx_latitude double precision,
  tx_longitude double precision,
  tx_height_m real,
  marks text,
  log text,
  block integer,
  line integer
);
