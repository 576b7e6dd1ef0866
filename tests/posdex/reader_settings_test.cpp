#include "reader_settings.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <vector>

#include "harness.h"
#include "support/reason_of.h"

namespace kestrum::posdex {
namespace {

using Kind = SourceChoice::Kind;

SourceChoice Gpsd(const char* host, quint16 port) {
  return {Kind::kGpsd, Q(host), port, {}, 4800, false};
}
SourceChoice Serial(const char* device, int baud) {
  return {Kind::kSerial, Q("localhost"), 2947, Q(device), baud, false};
}
SourceChoice File(const char* path, bool loop) {
  return {Kind::kFile, Q("localhost"), 2947, Q(path), 4800, loop};
}

SourceChoice Auto() {
  SourceChoice choice;
  choice.kind = Kind::kAuto;
  return choice;
}

TEST(ReaderSettings, ReadsSources) {
  const std::vector<std::pair<const char*, SourceChoice>> rows{
      {"auto", Auto()},
      {"gpsd", Gpsd("localhost", 2947)},
      {"gpsd:pi.local", Gpsd("pi.local", 2947)},
      {"gpsd:pi.local:3000", Gpsd("pi.local", 3000)},
      {"gpsd:[::1]:3000", Gpsd("::1", 3000)},
      {"gpsd:[::1]", Gpsd("::1", 2947)},
      {"serial:/dev/ttyUSB0@9600", Serial("/dev/ttyUSB0", 9600)},
      {"serial:/dev/ttyUSB0", Serial("/dev/ttyUSB0", 4800)},
      {"serial:gps@4800", Serial("gps", 4800)},
      {"serial:/dev/serial/by-id/a@b@115200", Serial("/dev/serial/by-id/a@b", 115200)},
      {"file:drive.nmea", File("drive.nmea", false)},
      {"file:/tmp/my drive.nmea?loop", File("/tmp/my drive.nmea", true)},
      {"  file:a=b  ", File("a=b", false)},
  };
  for (const auto& [text, source] : rows) {
    const Result<SourceChoice> parsed = ParseSource(Q(text));
    ASSERT_TRUE(parsed) << text << ": " << parsed.fault().reason;
    EXPECT_TRUE(parsed.value() == source) << text;
  }
}

TEST(ReaderSettings, RefusesMalformedSourcesAndSaysWhy) {
  const std::vector<std::pair<const char*, const char*>> rows{
      {"", "unknown source \"\""},
      {"auto:", "unknown source \"auto:\""},
      {"usb", "unknown source \"usb\""},
      {"GPSD", "unknown source \"GPSD\""},
      {"gpsd:", "no host after gpsd:"},
      {"gpsd::2947", "no host after gpsd:"},
      {"gpsd:host:", "bad gpsd port \":\""},
      {"gpsd:host:0", "bad gpsd port \":0\""},
      {"gpsd:host:65536", "bad gpsd port \":65536\""},
      {"gpsd:host:-1", "bad gpsd port \":-1\""},
      {"gpsd:host:29x", "bad gpsd port \":29x\""},
      {"gpsd:[::1", "no ] after the host in \"[::1\""},
      {"gpsd:[]:1", "no host after gpsd:"},
      {"gpsd:[::1]2947", "bad gpsd port \"2947\""},
      {"serial:", "no device after serial:"},
      {"serial:@4800", "no device after serial:"},
      {"serial:gps@", "bad baud rate \"\""},
      {"serial:gps@fast", "bad baud rate \"fast\""},
      {"serial:gps@49", "bad baud rate \"49\""},
      {"serial:gps@99999999999999999999", "bad baud rate \"99999999999999999999\""},
      {"file:", "no path after file:"},
      {"file:?loop", "no path after file:"},
      {"file:a\x01"
       "b",
       "bad characters in \"file:a?b\""},
  };
  for (const auto& [text, complaint] : rows) {
    EXPECT_EQ(test::TextOfFault(ParseSource(Q(text))), complaint) << text;
  }
}

TEST(ReaderSettings, ReadsConfigurations) {
  struct Row {
    QByteArray bytes;
    SourceChoice source;
    const char* complaint;
  };
  const SourceChoice standard = Gpsd("localhost", 2947);
  const std::vector<Row> rows{
      {"", standard, ""},
      {"# nothing but a comment", standard, ""},
      {"source=serial:gps@4800\n", Serial("gps", 4800), ""},
      {"; old\r\n\r\n  Source = serial:gps@9600  \r\n", Serial("gps", 9600), ""},
      {"source=file:a\rsource=file:b\r", File("b", false), ""},
      {"\xEF\xBB\xBFsource=file:caf\xC3\xA9",
       {Kind::kFile, Q("localhost"), 2947, Q("caf\xE9"), 4800, false},
       ""},
      {"source=file:a\nsource=nonsense\n", File("a", false),
       "posdex.conf line 2: unknown source \"nonsense\""},
      {"source", standard, "posdex.conf line 1: not a setting: \"source\""},
      {"=", standard, "posdex.conf line 1: unknown setting \"\""},
      {"baud=4800\nsource=file:a", File("a", false), "posdex.conf line 1: unknown setting \"baud\""},
      {"x\ny\nz", standard, "posdex.conf line 1: not a setting: \"x\" (and 2 more)"},
      {"source=serial:gps@", standard, "posdex.conf line 1: bad baud rate \"\""},
      {QByteArray("\0\x01\x02", 3), standard, "posdex.conf line 1: not a setting: \"???\""},
      {QByteArray(100, 'y'), standard,
       "posdex.conf line 1: not a setting: \"yyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyy...\""},
  };
  for (const Row& row : rows) {
    const ReaderSettings settings = ParseConf(row.bytes);
    EXPECT_TRUE(settings.source == row.source) << row.bytes.toStdString();
    EXPECT_EQ(test::TextOfFault(settings.complaint), row.complaint) << row.bytes.toStdString();
  }
}

TEST(ReaderSettings, EveryPrefixOfAConfigurationGivesASourceOrTheDefault) {
  const QByteArray whole = "# the receiver\nsource=serial:/dev/ttyUSB0@4800\nsource=gpsd:pi:2947\n";
  for (qsizetype length = 0; length <= whole.size(); ++length) {
    const SourceChoice source = ParseConf(whole.left(length)).source;
    EXPECT_TRUE(source.kind == Kind::kGpsd || source.kind == Kind::kSerial) << length;
    EXPECT_FALSE(source.kind == Kind::kGpsd && source.host.isEmpty()) << length;
  }
}

TEST(ReaderSettings, LoadsTheFileOrDoesWithout) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(Q("posdex.conf"));
  EXPECT_FALSE(LoadConf(path).complaint);
  EXPECT_TRUE(LoadConf(path).source == SourceChoice{});
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("source=file:a\n");
  file.close();
  EXPECT_TRUE(LoadConf(path).source == File("a", false));
  ASSERT_TRUE(file.remove());
  ASSERT_TRUE(QDir(folder.path()).mkdir(Q("posdex.conf")));
  EXPECT_EQ(test::TextOfFault(LoadConf(path).complaint), "posdex.conf is not a file");
}

TEST(ReaderSettings, ReadsTheCommandLine) {
  EXPECT_TRUE(ParseCommandLine({Q("--help")}).help);
  EXPECT_TRUE(ParseCommandLine({Q("--version")}).version);
  EXPECT_TRUE(ParseCommandLine({Q("--minimised")}).minimised);
  EXPECT_FALSE(ParseCommandLine({}).source);
  EXPECT_TRUE(ParseCommandLine({Q("--source"), Q("serial:gps@9600")}).source == Serial("gps", 9600));
  EXPECT_TRUE(ParseCommandLine({Q("--source=file:a")}).source == File("a", false));
}

TEST(ReaderSettings, RefusesACommandLineThatMakesNoSense) {
  EXPECT_EQ(test::TextOfFault(ParseCommandLine({Q("--sauce")}).complaint), "unknown option \"--sauce\"");
  EXPECT_EQ(test::TextOfFault(ParseCommandLine({Q("--source")}).complaint), "--source needs a source");
  EXPECT_EQ(test::TextOfFault(ParseCommandLine({Q("--source=x")}).complaint),
            "--source: unknown source \"x\"");
}

}  // namespace
}  // namespace kestrum::posdex
