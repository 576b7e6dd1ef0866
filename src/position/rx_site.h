#pragma once

#include "config/settings.h"
#include "position/gps_links.h"
#include "position/great_circle.h"

namespace kestrum {

// What is shown of the way from the receiver to the transmitter, and the reference of distance logging.
class RxSite {
 public:
  RxSite(const State& state, Form1& form, GpsLinks& gps, GreatCircle& circle);

  // TX position from the TX site texts.
  void CalcTxPos();
  // RX position from the captions of the GPS labels.
  void CalcRxPos();
  // The record's position becomes the reference of distance logging.
  void CalcPosABStart();
  // Distance in km from the reference to the present fix; leaves the reference in the TX slots.
  float DistanceFromReference();
  // The TX slots become the reference.
  // Kept on purpose: SetGPSdata has just put the TX site there, so from the second record on the interval is
  // measured from the transmitter.
  void ReferenceFromTxSlots();
  // With a valid fix: GPS fields, distance, bearing, optical distance, pelorus. Else nothing.
  void SetGPSdata();

 private:
  void ShowBearing();
  void ShowOpticalDistance();
  void ShowPelorus();

  const State& state_;
  Form1& form_;
  GpsLinks& gps_;
  GreatCircle& circle_;
};

}  // namespace kestrum
