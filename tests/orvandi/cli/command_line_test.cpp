#include "cli/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/logger_log.h"
#include "cli/summary_text.h"
#include "support/log_text.h"

namespace orvandi {
namespace {

using testing::HasSubstr;
using testing::Not;

CommandLine Parse(const char* words) {
  return ParseCommandLine(QString::fromUtf8(words).split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

TEST(CommandLine, TakesWhatIsTyped) {
  EXPECT_EQ(Parse("").complaint, QString());
  EXPECT_FALSE(Parse("a.log b.log").TextOnly());
  EXPECT_EQ(Parse("a.log b.log").files.size(), 2);
  for (const char* words :
       {"--export kml a.log -o out.kml", "-e KML -o out.kml a.log", "a.log --export=kml --output=out.kml",
        "--output out.kml --export kml -- a.log"}) {
    const CommandLine line = Parse(words);
    EXPECT_EQ(line.complaint, QString()) << words;
    EXPECT_EQ(line.format, Format::kKml) << words;
    EXPECT_EQ(line.output, QStringLiteral("out.kml")) << words;
    EXPECT_EQ(line.files, QStringList(QStringLiteral("a.log"))) << words;
    EXPECT_TRUE(line.TextOnly());
  }
  const CommandLine line = Parse("-s -c Calibration1.cfg a.log");
  EXPECT_TRUE(line.summary);
  EXPECT_EQ(line.calibration, QStringLiteral("Calibration1.cfg"));
  EXPECT_TRUE(Parse("--minimised").minimised);
  EXPECT_TRUE(Parse("--help").help);
  EXPECT_TRUE(Parse("-v").version);
  EXPECT_EQ(Parse("-- --odd.log").files, QStringList(QStringLiteral("--odd.log")));
}

TEST(CommandLine, SaysWhatIsWrong) {
  struct Row {
    const char* words;
    const char* complaint;
  };
  for (const Row& row :
       {Row{"--exprot kml", "unknown option --exprot"},
        Row{"--export pdf a.log", "unknown format pdf; there are csv, geojson, gpx and kml"},
        Row{"--export", "--export needs a value"}, Row{"-e csv -o", "-o needs a value"},
        Row{"--export=", "--export needs a value"}, Row{"-o x a.log", "--output needs --export"},
        Row{"--all a.log", "--all needs --export"},
        Row{"--calibration x a.log", "--calibration needs --export or --summary"},
        Row{"--summary --export csv", "choose --export or --summary, not both"},
        Row{"--summary=yes", "--summary takes no value"}}) {
    EXPECT_EQ(Parse(row.words).complaint.toStdString(), row.complaint) << row.words;
  }
}

// A configuration whose line 21 names a log.
std::string Config(const std::string& log) {
  std::vector<std::string> lines(23, "x");
  lines[20] = log;
  return Text(lines);
}

TEST(LoggerLog, IsTheOneOfTheConfiguration) {
  const Folder folder;
  const QString home = QString::fromStdString(folder.Path(""));
  const auto log = [&] { return LoggerLog(home).toStdString(); };
  EXPECT_EQ(log(), folder.Path("RSSI-GPS.log"));
  struct Row {
    std::string name;
    std::string path;
  };
  for (const Row& row :
       {Row{"/drives/today.log", "/drives/today.log"}, Row{"today.log", folder.Path("today.log")},
        Row{"\\today.log", folder.Path("today.log")}, Row{"", folder.Path("RSSI-GPS.log")},
        Row{"  ", folder.Path("RSSI-GPS.log")}, Row{"/drives/h\xFCtte.log", "/drives/h\xC3\xBCtte.log"}}) {
    folder.Write("Kestrum.cfg", Config(row.name));
    EXPECT_EQ(log(), row.path) << row.name;
  }
  folder.Write("Kestrum.cfg", "x\r\ny\r\n");
  EXPECT_EQ(log(), folder.Path("RSSI-GPS.log"));
}

TEST(SummaryText, TellsTheDrive) {
  auto lines = BlockLines("21-11-2026 01:55:34, 5157.00N, 00532.00E, 25 m,  FT840 LSB  3630 kHz, Loop",
                          {"01:55:30", "01:55:31", "01:55:34"});
  for (const std::string& line : BlockLines(
           "21-11-2026 01:56:34, 5157.00N, 00532.00E, 25 m,  FT840 LSB  3630 kHz, Yagi", {"01:56:30"})) {
    lines.push_back(line);
  }
  lines.emplace_back("left home");
  Log log = Read(Text(lines));
  log.records[1].marks = kNoFix;
  const std::vector<NamedLog> logs = {{&log, "drive.log"}};
  const std::string text = SummaryText(logs).toStdString();
  EXPECT_EQ(
      text,
      "drive.log\n"
      "  records         4 in 2 blocks\n"
      "  time            2026-11-21 01:55:30 to 2026-11-21 01:56:30\n"
      "  shown           3\n"
      "  left out        1 no fix\n"
      "  driven          0.00 km\n"
      "  field strength  median 85.2 dB\xC2\xB5V/m, 10 % below 85.2, 10 % above 85.2\n"
      "  over distance   100.0 dB\xC2\xB5V/m at 1 km if it falls as in free space; 5.46 to 5.46 km is too "
      "little to say more\n"
      "  antennas\n"
      "    Loop: 3 records, median 85.2 dB\xC2\xB5V/m\n"
      "    Yagi: 1 record, median 85.2 dB\xC2\xB5V/m\n"
      "  not understood  1 line\n"
      "    drive.log line 11: Neither a header nor a record: left home\n");
}

TEST(SummaryText, ListsTwentyLinesAndCountsTheOthers) {
  std::string bytes;
  for (int line = 0; line < 25; ++line) bytes += "foreign\n";
  const Log log = Read(bytes);
  const std::vector<NamedLog> logs = {{&log, "x"}};
  const std::string text = SummaryText(logs).toStdString();
  EXPECT_THAT(text, HasSubstr("x line 20:"));
  EXPECT_THAT(text, Not(HasSubstr("x line 21:")));
  EXPECT_THAT(text, HasSubstr("and 5 more"));
}

}  // namespace
}  // namespace orvandi
