#include "position/gps_links.h"

#include <array>

#include "config/app_title.h"
#include "position/coordinates.h"
#include "position/speed_text.h"
#include "text/text.h"

namespace kestrum {
namespace {

constexpr const char* kTopic = "Posdex|form1";
constexpr std::size_t kLongestText = 64;
constexpr const char* kReader = "\\Posdex.exe";

struct LabelPlan {
  const char* item;
  const char* tool_tip;
};

// In the order of GpsLabels.
constexpr std::array<LabelPlan, 6> kPlans = {{{"lblLat1", "GPSLatitude."},
                                              {"lblLong1", "GPSLongitude."},
                                              {"lblVal1", "GPSValide."},
                                              {"lblCompas1", "GPSCompass."},
                                              {"lblHeight1", "GPSHeight."},
                                              {"lblSpeed1", "GPSSpeed."}}};

// Title of the reader's main window, either of its two versions; empty when it does not run.
std::string RunningReader(WindowLookup& windows) {
  for (const char* title : {"Posdex Version 1.18", "Posdex Version 1.19"}) {
    if (windows.Exists(title)) return title;
  }
  return {};
}

// A label that no value has reached yet shows its own name or that of its item.
bool NothingReceived(std::string_view height) {
  return SameText(height, "lblDDEHeight") || SameText(height, "lblHeight1");
}

}  // namespace

GpsLinks::GpsLinks(Form1& form, const PortSet<TextLinks, Dialogs, Clock, Program, WindowLookup>& ports)
    : form_(form), ports_(ports) {}

void GpsLinks::PrepareLabels() {
  const auto labels = GpsLabels(form_);
  for (LinkLabel* label : labels) label->link_topic = kTopic;
  for (std::size_t i = 0; i < labels.size(); ++i) {
    labels.at(i)->link_item = kPlans.at(i).item;
    labels.at(i)->tool_tip = kPlans.at(i).tool_tip;
  }
  LinkLabel& speed = form_.lblDDESpeed;
  speed.click = [&speed] { speed.tool_tip = SpeedText(speed.caption); };
}

void GpsLinks::LoadGps(bool start) {
  const std::string reader = RunningReader(ports_.windows);
  if (!start) {
    if (!reader.empty()) ports_.windows.Close(reader);
    for (const LinkLabel* label : GpsLabels(form_)) ports_.links.Unlink(label->link_topic, label->link_item);
    return;
  }
  if (reader.empty() && !ports_.program.StartCompanion(kReader, ShowStyle::kNormalWithoutFocus)) {
    ports_.dialogs.Show(VersionedTitle, "Posdex.exe Not found", Icon::kCritical);
    if (ports_.program.Ended()) return;
  }
  // The links wait for a reader that is still starting, and take up one that is started by hand later.
  for (LinkLabel* label : GpsLabels(form_)) {
    ports_.links.LinkAutomatic(label->link_topic, label->link_item, [label](const std::string& text) {
      // What is longer is no text of a receiver.
      label->caption = text.size() <= kLongestText ? text : std::string();
    });
  }
}

void GpsLinks::GetAllDDE() {
  record.latitude = form_.lblDDELat.caption;
  record.longitude = form_.lblDDELong.caption;
  record.validity = form_.lblDDEVal.caption;
  record.height = form_.lblDDEHeight.caption;
  record.speed = form_.lblDDESpeed.caption;
  record.compass = form_.lblDDECompas.caption;
  NoteFix();
}

bool GpsLinks::ReaderPresent() const {
  return ports_.links.ServerPresent(kTopic);
}

std::optional<std::chrono::milliseconds> GpsLinks::ReaderSilentFor() const {
  return ports_.links.SilentFor(kTopic);
}

void GpsLinks::NoteFix() {
  // Texts of a reader that has gone or stands still are no new fix.
  if (!SaysValid() || !ReaderPresent()) return;
  const auto heard = ports_.clock.Elapsed() - ReaderSilentFor().value_or(std::chrono::milliseconds{0});
  if (!last_fix_ || heard > *last_fix_) last_fix_ = heard;
}

std::optional<std::chrono::milliseconds> GpsLinks::FixAge() const {
  if (!last_fix_) return {};
  return ports_.clock.Elapsed() - *last_fix_;
}

void GpsLinks::StartReaderAgain() {
  const std::string reader = RunningReader(ports_.windows);
  if (!reader.empty()) ports_.windows.Close(reader);
  if (ports_.program.StartCompanion(kReader, ShowStyle::kNormalWithoutFocus)) return;
  ports_.dialogs.Show(VersionedTitle, "Posdex.exe Not found", Icon::kCritical);
}

bool GpsLinks::GetGPSdataStartLast() {
  GetAllDDE();
  if (!FixIsValid(record.validity)) return false;
  ShowGpsFields();
  return true;
}

void GpsLinks::ShowGpsFields() {
  site.validity = FixIsValid(record.validity) ? "GPS Ok" : "No GPS";
  site.latitude = record.latitude;
  site.longitude = record.longitude;
  // Kept on purpose: the receiver's height is read from the fifth field, the one of the speed label, as feet.
  // Logs and optical distances of earlier drives were made that way.
  const std::string& height = record.speed;
  if (NothingReceived(height)) {
    site.validity = "No GPS";
  } else {
    site.height = FeetToMetres(height) + " m";
  }
  ShowSite();
}

void GpsLinks::ShowSite() {
  form_.lblRxVal.caption = site.validity;
  form_.lblRxLat.caption = site.latitude;
  form_.lblRxLong.caption = site.longitude;
  form_.lblRxDist.caption = site.distance;
  form_.lblRxHeight.caption = site.height;
  form_.lblRxBearing.caption = site.bearing;
}

void GpsLinks::ShowFixAge() {
  const bool reader_present = ports_.links.ServerPresent(kTopic);
  if (FixIsValid(record.validity) && reader_present) {
    form_.lblRxVal.back_color = Color::kSystem;
    form_.lblRxVal.tool_tip = "GPS RX Ok.";
    return;
  }
  form_.lblRxVal.back_color = Color::kWarning;
  if (!last_fix_) {
    form_.lblRxVal.tool_tip = "No GPS fix yet. Is the reader running and the sky in view?";
    return;
  }
  const auto age = std::chrono::duration_cast<std::chrono::seconds>(ports_.clock.Elapsed() - *last_fix_);
  const std::string cause = reader_present ? "No valid fix for " : "The GPS reader has been gone for ";
  form_.lblRxVal.tool_tip =
      cause + std::to_string(age.count()) + " s. The position shown is the last one received.";
}

}  // namespace kestrum
