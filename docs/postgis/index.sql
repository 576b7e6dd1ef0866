-- After loading: a point for each record, and an index over the points.
alter table records add column place geometry(Point, 4326)
  generated always as (ST_SetSRID(ST_MakePoint(longitude, latitude), 4326)) stored;
create index records_place on records using gist (place);
analyze records;
