#include "position/tx_site.h"

#include <algorithm>

#include "config/app_title.h"
#include "config/hint_line.h"
#include "position/coordinates.h"
#include "text/text.h"

namespace kestrum {

struct TxSite::CoordinateDialog {
  const char* prompt;
  const char* kind;
  const char* complaint;
};

TxSite::TxSite(State& state, Form1& form, const PortSet<Dialogs, Program>& ports, RxSite& rx_site)
    : state_(state), form_(form), ports_(ports), rx_site_(rx_site) {}

void TxSite::Wire() {
  form_.mnuTxLatLong.click = [this] { mnuTxLatLong_Click(); };
  form_.mnuTxLatLongGps.click = [this] { mnuTxLatLongGps_Click(); };
  form_.cmdGetTxFix.click = [this] { cmdGetTxFix_Click(); };
  form_.cmbTxAntenna.enter_pressed = [this] { cmbTxAntenna_Enter(); };
  form_.cmbTxAntenna.taken = [this] { Run(antenna_taken); };
  Disarm();
}

void TxSite::ShowSite() {
  form_.lblTxLat.caption = state_.settings.TxLat;
  form_.lblTxLong.caption = state_.settings.TxLong;
  form_.lblTxHeight.caption = state_.settings.TxHeight;
}

void TxSite::FillAntennas() {
  ComboBox& box = form_.cmbTxAntenna;
  const auto& antennas = state_.settings.TxAntennas;
  box.items.assign(antennas.begin(), std::find(antennas.begin(), antennas.end(), ""));
  box.text = box.items.empty() ? antennas.front() : box.items.back();
}

void TxSite::StoreAntennas() {
  auto& antennas = state_.settings.TxAntennas;
  const auto& items = form_.cmbTxAntenna.items;
  std::copy_n(items.begin(), std::min(items.size(), antennas.size()), antennas.begin());
}

// The checked coordinate, or empty when the present one stays.
std::string TxSite::AskCoordinate(const CoordinateDialog& dialog, const std::string& present) {
  for (;;) {
    const std::string answer = ports_.dialogs.AskText(VersionedTitle, dialog.prompt, present);
    if (ports_.program.Ended() || answer.empty()) return {};
    std::string checked = CheckLatLong(answer, dialog.kind);
    if (!checked.empty()) return checked;
    const std::string question = std::string(dialog.complaint) + "\r\n\r\nTry Again";
    const bool again = ports_.dialogs.AskYesNo(AppTitle, question, Icon::kQuestion);
    if (ports_.program.Ended() || !again) return {};
  }
}

void TxSite::mnuTxLatLong_Click() {
  static constexpr CoordinateDialog kLatitude = {"TX Latitude Format must be like 0000.00N", "LAT",
                                                 "Wrong Latitude Input!"};
  static constexpr CoordinateDialog kLongitude = {"TX Longitude Format must be like 00000.00E", "LONG",
                                                  "Wrong Longitude Input!"};
  Settings& settings = state_.settings;

  const std::string latitude = AskCoordinate(kLatitude, settings.TxLat);
  if (ports_.program.Ended()) return;
  if (!latitude.empty()) Store(settings.TxLat, latitude);

  const std::string longitude = AskCoordinate(kLongitude, settings.TxLong);
  if (ports_.program.Ended()) return;
  if (!longitude.empty()) Store(settings.TxLong, longitude);

  const std::string height = HeightText(
      ports_.dialogs.AskText(VersionedTitle, "TX Height Format must be like 00.0 m", settings.TxHeight));
  if (ports_.program.Ended()) return;
  if (!height.empty()) Store(settings.TxHeight, height);

  ShowSite();
  rx_site_.CalcTxPos();
}

void TxSite::mnuTxLatLongGps_Click() {
  form_.cmdGetTxFix.enabled = true;
  form_.frmTxSite.back_color = Color::kRed;
}

void TxSite::cmdGetTxFix_Click() {
  form_.tmrMain.Stop();
  // One look is enough: links deliver as window events, so the caption cannot change while a handler runs.
  if (FixIsValid(form_.lblDDEVal.caption)) {
    Settings& settings = state_.settings;
    const std::string height = FeetToMetres(form_.lblDDEHeight.caption) + " m";
    const bool moved = settings.TxLat != form_.lblDDELat.caption ||
                       settings.TxLong != form_.lblDDELong.caption || settings.TxHeight != height;
    if (moved) Run(block_ends);
    settings.TxLat = form_.lblDDELat.caption;
    settings.TxLong = form_.lblDDELong.caption;
    settings.TxHeight = height;
    ShowSite();
    rx_site_.CalcTxPos();
    form_.frmTxSite.caption = "TxSite";  // an earlier failure is over
  } else {
    // The timer stands still until the handler is through, so the box must not hold it up.
    ports_.dialogs.Notify(VersionedTitle, "No GPS rx now.", Icon::kExclamation);
    form_.frmTxSite.caption = "No TxSite GPS rxed.";
  }
  Disarm();
  StartMeasuring(state_, form_);
}

void TxSite::Store(std::string& setting, const std::string& value) {
  if (setting == value) return;
  Run(block_ends);
  setting = value;
}

void TxSite::Disarm() {
  form_.cmdGetTxFix.enabled = false;
  form_.frmTxSite.back_color = Color::kSystem;
}

void TxSite::cmbTxAntenna_Enter() {
  ComboBox& box = form_.cmbTxAntenna;
  // Kept on purpose: a text is known when an entry stands inside it, so a shortened entry is added and an
  // extended one is not.
  const bool known = std::any_of(box.items.begin(), box.items.end(),
                                 [&box](const std::string& entry) { return ContainsText(box.text, entry); });
  if (!box.text.empty() && !known) box.items.push_back(box.text);
  Run(antenna_taken);
}

}  // namespace kestrum
