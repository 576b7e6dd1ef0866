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
  // Distance in km from the reference to the present fix.
  float DistanceFromReference();
  // The place measured against last becomes the reference.
  // Kept on purpose: SetGPSdata has just measured to the TX site, so from the second record on the interval
  // is measured from the transmitter.
  void MoveReference();
  // With a valid fix: GPS fields, distance, bearing, optical distance, pelorus. Else nothing. The site as it
  // is shown then.
  Site SetGPSdata();
  // Question marks for everything that is not known yet.
  void ShowPlaceholders();

 private:
  void ShowBearing();
  void ShowOpticalDistance();
  void ShowPelorus();

  const State& state_;
  Form1& form_;
  GpsLinks& gps_;
  GreatCircle& circle_;
  bool measured_to_tx_ = false;  // else the last distance was that to the reference
};

}  // namespace kestrum
