#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "forms/form1.h"
#include "platform/ports.h"
#include "position/site.h"
#include "text/text.h"

namespace kestrum {

// The GPS record: six texts exactly as the reader sent them.
struct GpsRecord {
  std::string latitude;
  std::string longitude;
  std::string validity;  // "A" for a valid fix
  std::string height;    // feet
  std::string speed;     // knots
  std::string compass;   // degrees, "32768" when there is none
};

// Whether a validity text of the reader means a valid fix.
inline bool FixIsValid(std::string_view validity) {
  return SameText(validity, "A");
}

// Links to the GPS reader and the record taken from them.
class GpsLinks {
 public:
  GpsLinks(Form1& form, const PortSet<TextLinks, Dialogs, Clock, Program, WindowLookup>& ports);

  GpsRecord record;
  Site site;  // as shown; distance and bearing are the way's to fill in

  // At start-up: topic, item and tool tip of the six labels, and the speed units on a click.
  void PrepareLabels();
  // true: finds or starts the reader and opens the links; false: closes the reader and the links.
  void LoadGps(bool start);
  // Copies the six captions into the record.
  void GetAllDDE();
  // GetAllDDE; shows the fields and returns true when the fix is valid, else changes no display.
  bool GetGPSdataStartLast();
  // Position, height and "GPS Ok" or "No GPS" of the record.
  void ShowGpsFields();
  // Paints the site.
  void ShowSite();

  // The reader as far as is known now.
  bool ReaderPresent() const;
  std::optional<std::chrono::milliseconds> ReaderSilentFor() const;
  // What the reader said last of its fix, whether it is still there or not.
  bool SaysValid() const { return FixIsValid(form_.lblDDEVal.caption); }
  // Age of the last valid fix at the moment it was heard; nothing when there has been none.
  std::optional<std::chrono::milliseconds> FixAge() const;
  // Remembers when a valid fix was heard last; called while the labels stand as the reader has sent them.
  void NoteFix();
  // Closes a reader that stands still, and starts one.
  void StartReaderAgain();

  // Warns in lblRxVal (colour and tool tip with the age of the last fix) while the present fix is missing.
  void ShowFixAge();

 private:
  Form1& form_;
  PortSet<TextLinks, Dialogs, Clock, Program, WindowLookup> ports_;
  std::optional<std::chrono::milliseconds> last_fix_;
};

}  // namespace kestrum
