#pragma once

#include "position/rx_site.h"

namespace kestrum {

// The fixed transmitter: entered in three dialogs or taken from the GPS fix while standing there.
class TxSite {
 public:
  TxSite(State& state, Form1& form, const PortSet<Dialogs, Program>& ports, RxSite& rx_site);

  // Set by the application.
  Handler block_ends;     // what the header tells of the site is about to change
  Handler antenna_taken;  // the antenna text of the box counts from now on

  // Hangs the handlers on the menus, cmdGetTxFix and cmbTxAntenna; cmdGetTxFix starts disarmed.
  void Wire();
  // The three TX labels.
  void ShowSite();
  // Start-up: the antenna list from the settings. Shutdown: back, at most 21.
  void FillAntennas();
  void StoreAntennas();

  void mnuTxLatLong_Click();
  void mnuTxLatLongGps_Click();
  void cmdGetTxFix_Click();
  void cmbTxAntenna_Enter();

 private:
  struct CoordinateDialog;
  std::string AskCoordinate(const CoordinateDialog& dialog, const std::string& present);
  void Store(std::string& setting, const std::string& value);
  void Disarm();

  State& state_;
  Form1& form_;
  PortSet<Dialogs, Program> ports_;
  RxSite& rx_site_;
};

}  // namespace kestrum
