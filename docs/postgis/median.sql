-- The median field strength in each square of 100 m, in a box given by two corners. 32631 is UTM zone 31 north, in
-- metres; take the zone of your drives.
with near as (
  select dbuv_per_m, ST_SnapToGrid(ST_Transform(place, 32631), 100) as square
  from records
  where place && ST_MakeEnvelope(5.50, 51.95, 5.53, 51.97, 4326)
)
select ST_X(square) as east_m, ST_Y(square) as north_m, count(*) as records,
  round(percentile_cont(0.5) within group (order by dbuv_per_m)::numeric, 1) as median_dbuv_per_m
from near
where dbuv_per_m is not null
group by square
having count(*) >= 3
order by north_m, east_m;
