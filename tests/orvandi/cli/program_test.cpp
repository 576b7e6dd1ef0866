#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "support/command.h"
#include "support/log_text.h"

namespace orvandi {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

const std::string kProgram = ORVANDI_PROGRAM;
const std::string kLog =
    Text(BlockLines("21-11-2026 01:55:34, 5157.00N, 00532.00E, 25 m,  FT840 LSB  3630 kHz, Loop, PWR 10W",
                    {"01:55:31", "01:55:33", "01:55:34"}));

// In a German session without any display.
CommandResult RunProgram(const std::string& arguments, const std::string& program = kProgram) {
  return RunCommand("env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM LC_ALL=de_DE.UTF-8 TZ=UTC '" +
                    program + "' " + arguments + " 2>&1");
}

TEST(Program, ExportsWithoutAWindow) {
  const Folder folder;
  const std::string log = folder.Write("drive.log", kLog);
  for (const std::string format : {"kml", "gpx", "geojson", "csv"}) {
    const std::string path = folder.Path("drive." + format);
    const auto result = RunProgram("--export " + format + " '" + log + "' -o '" + path + "'");
    EXPECT_EQ(result.code, 0) << result.output;
    EXPECT_EQ(result.output, "Records written: 3\n");
    EXPECT_GT(std::filesystem::file_size(path), 300U) << format;
  }
  EXPECT_EQ(
      RunCommand("xmllint --noout '" + folder.Path("drive.kml") + "' '" + folder.Path("drive.gpx") + "'")
          .code,
      0);
  EXPECT_EQ(
      RunCommand("gpsbabel -t -i gpx -f '" + folder.Path("drive.gpx") + "' -o nmea -F - | grep -c GPRMC")
          .output,
      "3\n");
}

TEST(Program, WritesToAPipe) {
  const Folder folder;
  const std::string log = folder.Write("drive.log", kLog);
  const auto result =
      RunCommand("TZ=UTC '" + kProgram + "' --export csv '" + log + "' 2>/dev/null | head -n 2 | tail -n 1");
  EXPECT_THAT(result.output,
              StartsWith("2026-11-21T01:55:31+00:00,01:55:31,51.9850000,5.5892433,5.4605,44.52,"));
  const auto full = RunCommand("'" + kProgram + "' --export csv '" + log + "' 2>&1 >/dev/full");
  EXPECT_EQ(full.code, 1);
  EXPECT_THAT(full.output, HasSubstr("No space left on device"));
}

TEST(Program, SummarisesTheLoggersLog) {
  const Folder folder;
  const std::string program = folder.Path("Orvandi");
  std::filesystem::copy_file(kProgram, program);
  EXPECT_EQ(RunProgram("--summary", program).code, 1);
  folder.Write("RSSI-GPS.log", kLog);
  const auto result = RunProgram("--summary", program);
  EXPECT_EQ(result.code, 0) << result.output;
  EXPECT_THAT(result.output, StartsWith("RSSI-GPS.log\n  records         3 in 1 block\n"));
  EXPECT_THAT(result.output, HasSubstr("median 85.2 dB"));
  std::vector<std::string> config(22, "");
  config[20] = "other.log";
  folder.Write("Kestrum.cfg", Text(config));
  folder.Write("other.log", kLog + kLog);
  EXPECT_THAT(RunProgram("--summary", program).output,
              StartsWith("other.log\n  records         6 in 2 blocks\n"));
}

TEST(Program, TellsWhatItLeavesOutAndWhatItCannotRead) {
  const Folder folder;
  RecordText lost;
  lost.fix = "No GPS";
  const std::string log = folder.Write("drive.log", kLog + Line(lost) + "\r\n");
  EXPECT_EQ(RunProgram("-e csv -o '" + folder.Path("a.csv") + "' '" + log + "'").output,
            "Records written: 3; left out for their marks: 1 (--all)\n");
  EXPECT_EQ(RunProgram("-e csv --all -o '" + folder.Path("a.csv") + "' '" + log + "'").output,
            "Records written: 4\n");
  const auto missing = RunProgram("-e csv -o '" + folder.Path("b.csv") + "' /no/such.log");
  EXPECT_EQ(missing.code, 1);
  EXPECT_EQ(missing.output, "Orvandi: /no/such.log: There is no such file.\n");
  EXPECT_FALSE(std::filesystem::exists(folder.Path("b.csv")));
  const auto calibration = RunProgram("--summary -c /no/such.cfg '" + log + "'");
  EXPECT_EQ(calibration.code, 1);
  EXPECT_THAT(calibration.output, HasSubstr("/no/such.cfg: "));
  const auto nowhere = RunProgram("-e csv -o /no/such/a.csv '" + log + "'");
  EXPECT_EQ(nowhere.code, 1);
  EXPECT_THAT(nowhere.output, HasSubstr("/no/such/a.csv could not be written"));
}

TEST(Program, TakesNoOptionItDoesNotKnow) {
  const auto result = RunProgram("--summary --colour x.log");
  EXPECT_EQ(result.code, 2);
  EXPECT_EQ(result.output, "Orvandi: unknown option --colour; see --help\n");
}

TEST(Program, AnswersWithoutADisplay) {
  EXPECT_EQ(RunProgram("--version").output, "Orvandi V1.02\n");
  EXPECT_THAT(RunProgram("--help").output, StartsWith("Usage: Orvandi [options] [LOG...]\n"));
  const auto window = RunProgram("");
  EXPECT_EQ(window.code, 1);
  EXPECT_THAT(window.output, HasSubstr("there is no display"));
}

}  // namespace
}  // namespace orvandi
