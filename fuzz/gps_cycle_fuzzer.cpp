#include <algorithm>
#include <cmath>

#include "support/fuzz.h"
#include "support/scripted_car.h"
#include "text/number_text.h"
#include "text/text.h"
#include "text/text_file.h"

// The first character chooses the drive: "d" logs by distance, "m" on the minimal display, "t" takes the TX
// site from the fix, "a" averages, others plainly. Then come the reader's texts with "|" between them, six a
// cycle: latitude, longitude, validity, height, speed, compass.
namespace kestrum::fuzz {
namespace {

constexpr std::size_t kTexts = 6;

void CheckNumberWithUnit(const std::string& caption, const std::string& unit, const char* property) {
  Require(caption.ends_with(unit), property, caption);
  Require(MadeOf(caption.substr(0, caption.size() - unit.size()), "0123456789.-?"), property, caption);
}

// The captions that are computed; latitude and longitude are shown as they came.
void CheckCaptions(const test::ScriptedCar& car) {
  const Form1& form = car.form1;
  const std::string degree(kDegree);
  const std::string& validity = form.lblRxVal.caption;
  Require(validity == "GPS Ok" || validity == "No GPS" || validity == "? GPS", "the state of the fix",
          validity);
  if (!SameText(form.lblDDEVal.caption, "A")) return;
  CheckNumberWithUnit(form.lblRxDist.caption, " km", "a distance");
  CheckNumberWithUnit(form.lblRxBearing.caption, degree, "a bearing");
  CheckNumberWithUnit(form.lblPelorus.caption, degree, "a pelorus");
  CheckNumberWithUnit(form.lblOpticalDistance.caption, " km", "an optical distance");
  Require(MadeOf(form.lblTextBearing.caption, "NESW?"), "a compass word", form.lblTextBearing.caption);
  Require(!form.Picture1.needle || std::isfinite(*form.Picture1.needle), "a needle");
  for (const Shape& shape : car.app.forms.form5.Picture1.shapes)
    Require(std::isfinite(shape.x2) && std::isfinite(shape.y2), "a needle's end");
}

void CheckGeometry(const GreatCircle& circle) {
  const float bearing = circle.bearing_deg;
  Require(bearing == kNoBearing || (bearing >= 0 && bearing <= 360), "a bearing", std::to_string(bearing));
  const float distance = circle.distance_km;
  Require(distance >= 0 && distance <= 20003, "a distance on the globe", std::to_string(distance));
}

void CheckRecord(const test::ScriptedCar& car) {
  const int count = car.app.log.LogCount;
  if (count == 0) return;
  const std::string& record = car.app.log.LogBuffer.at(static_cast<std::size_t>(count));
  int separators = 0;
  for (auto at = record.find(", "); at != std::string::npos; at = record.find(", ", at + 2)) ++separators;
  Require(separators >= 10, "a record has eleven fields", record);
}

// Whatever the texts were, the log file consists of whole blocks.
void CheckLog(const std::string& file, int records) {
  const auto lines = SplitLines(file);
  int written = 0;
  std::size_t at = 0;
  while (at < lines.size()) {
    Require(lines.size() - at >= 4, "a block has a head and a record", lines[at]);
    Require(MadeOf(lines[at], "-") && lines[at] == lines[at + 2], "a block begins with dashes", lines[at]);
    Require(lines[at + 1].size() == lines[at].size(), "dashes as long as the header", lines[at + 1]);
    at += 3;
    for (; at < lines.size() && lines[at].substr(2, 1) == ":"; ++at) ++written;
  }
  Require(written == records, "every record is one line of the log", std::to_string(written));
}

// A drive whose wait for a first fix ends after some pumps: somebody finds the sky.
class Drive {
 public:
  explicit Drive(char kind) : kind_(kind) {
    Settings settings = test::ScriptedCar::UsualSettings();
    settings.LogByDistance = kind == 'd';
    settings.AverageRSSI = kind == 'a';
    settings.TimeIntervalMs = 1200;
    settings.DistanceIntervalKm = 0.1F;
    car.WriteConfig(settings);
    car.s_meter = 100;
    car.world.pump.on_pump = [this] {
      if (++pumps_ > 2) car.world.links.Send("lblVal1", "A");
    };
    car.Start({.start_logging = true, .minimal = kind == 'm'});
    car.app.forms.form5.Picture1.width = 3000;
    car.app.forms.form5.Picture1.height = 1500;
  }

  test::ScriptedCar car;
  int records = 0;

  void Cycle(const std::vector<std::string>& texts, std::size_t first) {
    car.SendGps(texts[first], texts[first + 1], texts[first + 2], texts[first + 3], texts[first + 4],
                texts[first + 5]);
    if (kind_ == 't') {
      car.form1.mnuTxLatLongGps.click();
      car.form1.cmdGetTxFix.click();
    }
    car.form1.lblDDESpeed.click();
    pumps_ = 0;
    const int before = car.app.log.LogCount;
    car.form1.tmrMain.tick();
    records += car.app.log.LogCount - before;
    CheckCaptions(car);
    CheckGeometry(car.app.circle);
    CheckRecord(car);
    Require(MadeOf(car.form1.lblDDESpeed.tool_tip, "0123456789.- knots,km/sandph"), "four speeds",
            car.form1.lblDDESpeed.tool_tip);
  }

  void End() {
    car.app.ExitApp();
    CheckLog(car.world.files.files[car.kLogPath], records);
    test::ScriptedCar next;
    next.world.files.files["/car/Kestrum.cfg"] = car.world.files.files["/car/Kestrum.cfg"];
    next.app.config.LoadCfg();
    Require(next.world.dialogs.messages.empty(), "the next start finds good settings",
            next.world.files.files["/car/Kestrum.cfg"]);
    Require(next.settings.LogFileName == car.kLogPath, "no text of the reader moves a setting");
  }

 private:
  char kind_;
  int pumps_ = 0;
};

}  // namespace
}  // namespace kestrum::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kestrum::fuzz;
  if (size == 0) return 0;
  auto texts = Pieces(Text(data + 1, size - 1), 12 * kTexts);
  texts.resize((texts.size() + kTexts - 1) / kTexts * kTexts);
  Drive drive(static_cast<char>(data[0]));
  for (std::size_t first = 0; first < texts.size(); first += kTexts) drive.Cycle(texts, first);
  drive.End();
  return 0;
}
