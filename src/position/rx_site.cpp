#include "position/rx_site.h"

#include "position/coordinates.h"
#include "position/needle.h"
#include "text/number_text.h"
#include "text/single.h"
#include "text/text.h"

namespace kestrum {

RxSite::RxSite(const State& state, Form1& form, GpsLinks& gps, GreatCircle& circle)
    : state_(state), form_(form), gps_(gps), circle_(circle) {}

void RxSite::CalcTxPos() {
  circle_.tx = {LatLongToDeg(state_.settings.TxLat), LatLongToDeg(state_.settings.TxLong)};
}

void RxSite::CalcRxPos() {
  circle_.rx = {LatLongToDeg(form_.lblDDELat.caption), LatLongToDeg(form_.lblDDELong.caption)};
}

void RxSite::CalcPosABStart() {
  circle_.reference = {LatLongToDeg(gps_.record.latitude), LatLongToDeg(gps_.record.longitude)};
}

float RxSite::DistanceFromReference() {
  CalcRxPos();
  // Kept on purpose: a car that stands at the reference gets the distance computed last, not 0.
  circle_.CalcDistBearing(circle_.reference);
  measured_to_tx_ = false;
  return circle_.distance_km;
}

void RxSite::MoveReference() {
  if (measured_to_tx_) circle_.reference = circle_.tx;
}

Site RxSite::SetGPSdata() {
  if (!FixIsValid(form_.lblDDEVal.caption)) return gps_.site;
  gps_.ShowGpsFields();
  CalcTxPos();
  CalcRxPos();
  circle_.CalcDistBearing();
  measured_to_tx_ = true;
  // Kept on purpose: no zero before the point below 1 km, as in all log files so far.
  gps_.site.distance = ShortNumberSingle(ToSingle(RoundHalfEven(circle_.distance_km, 2))) + " km";
  ShowBearing();
  ShowOpticalDistance();
  ShowPelorus();
  return gps_.site;
}

void RxSite::ShowPlaceholders() {
  gps_.site = Site();
  gps_.ShowSite();
  form_.lblOpticalDistance.caption = "??.? km";
  form_.lblPelorus.caption = "???" + std::string(kDegree);
  form_.lblTextBearing.caption = "?";
}

void RxSite::ShowBearing() {
  const int bearing = RoundToInt(circle_.bearing_deg);
  const bool known = circle_.bearing_deg != kNoBearing;
  gps_.site.bearing = (known ? ThreeDigits(bearing) : "???") + std::string(kDegree);
  gps_.ShowSite();
  // The word goes with the whole number beside it; -1 lies in no sector.
  form_.lblTextBearing.caption = Trim(CompassText(ShortNumber(bearing)));
}

void RxSite::ShowOpticalDistance() {
  form_.lblOpticalDistance.caption =
      OpticalDistanceText(form_.lblTxHeight.caption, form_.lblRxHeight.caption) + " km";
}

void RxSite::ShowPelorus() {
  const std::string text = PelorusText(gps_.record.compass, RoundToInt(circle_.bearing_deg));
  form_.lblPelorus.caption = (text == kNothingTold ? "???" : text) + std::string(kDegree);
  form_.Picture1.needle = NeedleOf(text);
}

}  // namespace kestrum
