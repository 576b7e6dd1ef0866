#include "export/exporter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QLocale>
#include <clocale>

#include "support/command.h"
#include "support/log_text.h"

namespace orvandi {
namespace {

using testing::HasSubstr;

const std::string kHeader =
    "21-11-2026 01:55:34, 5157.00N, 00532.00E, 25 m,  FT840 LSB  3630 kHz, Loop \"B\", 10 W <\xFC>";
const std::string kSecondHeader = "22-11-2026 02:00:01, 5157.00S, 00532.00W, ? m,  FT817  145500.5 kHz, Yagi";

// Two blocks with three and two records, one of them without a fix, one without a position, one that is
// unknown.
Log Drive() {
  std::vector<std::string> lines = BlockLines(kHeader, {"01:55:31", "01:55:33", "01:55:34"});
  for (const std::string& line : HeaderLines(kSecondHeader)) lines.push_back(line);
  RecordText record;
  record.time = "01:59:59";
  record.latitude = "0012.3456S";
  record.longitude = "17959.9999W";
  record.s = "S9 + 10dB";
  record.microvolt = "158";
  record.field = ".65";
  lines.push_back(Line(record));
  record.time = "02:00:00";
  record.fix = "No GPS";
  lines.push_back(Line(record));
  record.latitude = "?";
  record.s = "S?";
  record.microvolt = record.field = "???";
  record.raw = "250";
  record.time = "02:00:01";
  lines.push_back(Line(record));
  return Read(Text(lines));
}

class Exports : public testing::Test {
 protected:
  Exports() {
    qputenv("TZ", "Europe/Amsterdam");
    // Numbers and times must not depend on the user's language.
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    std::setlocale(LC_ALL, "de_DE.UTF-8");
  }
  ~Exports() override { std::setlocale(LC_ALL, "C"); }

  // The path of the exported file.
  std::string Export(const std::string& name, const ExportOptions& options = {}) {
    const std::string path = folder_.Path(name);
    const QString qt_path = QString::fromStdString(path);
    outcome_ = ExportToFile(qt_path, FormatOfPath(qt_path).value(), logs_, options);
    EXPECT_TRUE(outcome_.ok) << outcome_.sentence.toStdString();
    return path;
  }

  // What a line of python prints with the file's path in sys.argv[1].
  std::string Python(const std::string& program, const std::string& path) {
    const auto result = RunCommand("PYTHONUTF8=1 python3 -c '" + program + "' '" + path + "'");
    EXPECT_EQ(result.code, 0) << program;
    return result.output;
  }
  std::string Xpath(const std::string& path, const std::string& expression) {
    const auto result = RunCommand("xmllint --xpath \"" + expression + "\" '" + path + "'");
    EXPECT_EQ(result.code, 0) << expression;
    const auto end = result.output.find_last_not_of('\n');
    return result.output.substr(0, end == std::string::npos ? 0 : end + 1);
  }

  Folder folder_;
  Log log_ = Drive();
  std::vector<NamedLog> logs_ = {{&log_, "drive, 1.log"}};
  ExportOutcome outcome_;
};

ExportOptions All() {
  ExportOptions options;
  options.shown_marks = kAllMarks;
  return options;
}

TEST(Formats, HaveNames) {
  EXPECT_EQ(FormatOfName(QStringLiteral("KML")), Format::kKml);
  EXPECT_EQ(FormatOfName(QStringLiteral("geojson")), Format::kGeoJson);
  EXPECT_FALSE(FormatOfName(QStringLiteral("pdf")));
  EXPECT_EQ(FormatOfPath(QStringLiteral("/a.b/drive.GPX")), Format::kGpx);
  EXPECT_EQ(FormatOfPath(QStringLiteral("drive.json")), Format::kGeoJson);
  EXPECT_FALSE(FormatOfPath(QStringLiteral("drive")));
}

TEST_F(Exports, LeaveOutMarkedRecordsAndSaySo) {
  Export("drive.csv");
  EXPECT_EQ(outcome_.written, 4U);
  EXPECT_EQ(outcome_.marked, 2U);
  EXPECT_EQ(outcome_.without_position, 0U);
  Export("drive.kml", All());
  EXPECT_EQ(outcome_.written, 5U);
  EXPECT_EQ(outcome_.without_position, 1U);
  ExportOptions hidden;
  hidden.hidden = [](std::uint32_t, std::uint32_t record) { return record == 0; };
  Export("drive.csv", hidden);
  EXPECT_EQ(outcome_.written, 3U);
}

TEST_F(Exports, CsvIsReadByPython) {
  const std::string path = Export("drive.csv", All());
  EXPECT_EQ(Python("import csv,sys; print(len(list(csv.DictReader(open(sys.argv[1], newline=\"\")))))", path),
            "6\n");
  const std::string row = "import csv,sys; r=list(csv.DictReader(open(sys.argv[1], newline=\"\"))); ";
  EXPECT_EQ(
      Python(row + "print(list(r[0].values()))", path),
      "['2026-11-21T01:55:31+01:00', '01:55:31', '51.9850000', '5.5892433', '5.4605', '44.52', '4.3', '121', "
      "'S8+', '44.2', '18.3', '85.25', '-74.08', 'FT840', 'LSB', '3630', 'Loop \"B\", 10 W <\xC3\xBC>', "
      "'51.9500000', '5.5333333', '25', '', 'drive, 1.log', '1', '4']\n");
  EXPECT_EQ(
      Python(row + "x=r[3]; print(x[\"latitude\"], x[\"longitude\"], x[\"mode\"], x[\"frequency_khz\"], "
                   "x[\"tx_height_m\"], x[\"mv_per_m\"], x[\"s\"], x[\"block\"])",
             path),
      "-0.2057600 -179.9999983  145500.5  0.65 S9 + 10dB 2\n");
  EXPECT_EQ(Python(row + "print([x[\"marks\"] for x in r], r[5][\"latitude\"]==\"\", r[5][\"dbm\"]==\"\", "
                         "r[5][\"raw\"])",
                   path),
            "['', '', '', '', 'no fix', 'no fix; no position; outside of the calibration'] True True 250\n");
  EXPECT_EQ(
      Python("import sys; b=open(sys.argv[1],\"rb\").read(); print(b.count(b\"\\r\\n\"), b.count(b\"\\n\"))",
             path),
      "7 7\n");
}

TEST_F(Exports, GeoJsonIsReadByPythonAndGdal) {
  const std::string path = Export("drive.geojson", All());
  const std::string load = "import json,sys; d=json.load(open(sys.argv[1])); f=d[\"features\"]; ";
  EXPECT_EQ(Python(load + "print(d[\"type\"], len(f), f[0][\"geometry\"])", path),
            "FeatureCollection 5 {'coordinates': [5.5892433, 51.985], 'type': 'Point'}\n");
  EXPECT_EQ(
      Python(load +
                 "p=f[0][\"properties\"]; print(p[\"uv\"], p[\"mv_per_m\"], p[\"dbuv_per_m\"], p[\"time\"], "
                 "p[\"antenna\"], p[\"raw\"], p[\"block\"], p[\"line\"], p[\"distance_km\"])",
             path),
      "44.2 18.3 85.25 2026-11-21T01:55:31+01:00 Loop \"B\", 10 W <\xC3\xBC> 121 1 4 5.4605\n");
  EXPECT_EQ(
      Python(load + "p=f[3][\"properties\"]; print(p[\"mode\"], p[\"tx_height_m\"], p[\"frequency_khz\"])",
             path),
      "None None 145500.5\n");
  const auto gdal = RunCommand("ogrinfo -ro -al -so '" + path + "'");
  EXPECT_EQ(gdal.code, 0);
  EXPECT_THAT(gdal.output, HasSubstr("Feature Count: 5"));
  EXPECT_THAT(gdal.output, HasSubstr("Geometry: Point"));
  EXPECT_THAT(gdal.output, HasSubstr("Extent: (-179.999998, -0.205760) - (5.589243, 51.985003)"));
  EXPECT_THAT(gdal.output, HasSubstr("dbuv_per_m: Real"));
}

TEST_F(Exports, GpxIsReadByGpsbabelAndGdal) {
  const std::string path = Export("drive.gpx", All());
  const std::string tracks = "//*[local-name()='trk']";
  EXPECT_EQ(Xpath(path, "count(" + tracks + ")"), "1");
  EXPECT_EQ(Xpath(path, "count(//*[local-name()='trkseg'])"), "2");
  EXPECT_EQ(Xpath(path, "string(" + tracks + "/*[local-name()='name'])"), "drive, 1.log");
  EXPECT_EQ(Xpath(path, "string((//*[local-name()='dbuv_per_m'])[1])"), "85.25");
  EXPECT_EQ(Xpath(path, "string((//*[local-name()='time'])[4])"), "2026-11-22T00:59:59Z");
  const auto babel = RunCommand("gpsbabel -t -i gpx -f '" + path + "' -o unicsv,utc=0 -F -");
  EXPECT_EQ(babel.code, 0);
  EXPECT_THAT(babel.output, HasSubstr("51.985000,5.589243"));
  EXPECT_THAT(babel.output, HasSubstr("2026/11/21,00:55:31"));
  EXPECT_EQ(std::count(babel.output.begin(), babel.output.end(), '\n'), 6);
  const auto gdal = RunCommand("ogrinfo -ro -so '" + path + "' track_points");
  EXPECT_EQ(gdal.code, 0);
  EXPECT_THAT(gdal.output, HasSubstr("Feature Count: 5"));
}

TEST_F(Exports, KmlIsReadByGdalAndXmllint) {
  const std::string path = Export("drive.kml", All());
  EXPECT_EQ(Xpath(path, "count(//*[local-name()='Folder'])"), "2");
  EXPECT_EQ(Xpath(path, "count(//*[local-name()='Folder'][1]/*[local-name()='Placemark'])"), "3");
  EXPECT_EQ(Xpath(path, "string(//*[local-name()='Folder'][1]/*[local-name()='name'])"),
            "2026-11-21 01:55:34 FT840 Loop \"B\", 10 W <\xC3\xBC>");
  EXPECT_EQ(Xpath(path, "string((//*[local-name()='Folder']//*[local-name()='coordinates'])[1])"),
            "5.5892433,51.9850000");
  EXPECT_EQ(Xpath(path, "string((//*[local-name()='when'])[1])"), "2026-11-21T01:55:31+01:00");
  // The strongest is yellow, the weakest dark blue, by the last bytes: blue, green, red.
  EXPECT_EQ(Xpath(path, "string((//*[local-name()='Folder']//*[local-name()='styleUrl'])[1])"), "#level31");
  EXPECT_EQ(Xpath(path, "string((//*[local-name()='Folder']//*[local-name()='styleUrl'])[4])"), "#level0");
  EXPECT_EQ(Xpath(path, "string(//*[@id='level31']//*[local-name()='color'])"), "ff25e7fd");
  EXPECT_EQ(Xpath(path, "count(//*[local-name()='Document']/*[local-name()='Placemark'])"), "2");
  const auto gdal = RunCommand("ogrinfo -ro -al -so '" + path + "'");
  EXPECT_EQ(gdal.code, 0);
  EXPECT_THAT(gdal.output, HasSubstr("2026-11-21 01:55:34 FT840"));
  EXPECT_THAT(gdal.output, HasSubstr("Feature Count: 3"));
}

TEST_F(Exports, RecordsWithoutADateHaveNoTime) {
  const Log undated = Read(Line({}) + "\n");
  logs_ = {{&undated, "x.log"}};
  EXPECT_EQ(Python("import csv,sys; r=list(csv.DictReader(open(sys.argv[1]))); print(r[0][\"time\"]==\"\", "
                   "r[0][\"time_of_day\"])",
                   Export("drive.csv")),
            "True 01:55:34\n");
  EXPECT_EQ(Xpath(Export("drive.gpx"), "count(//*[local-name()='time'])"), "0");
  EXPECT_EQ(Xpath(Export("drive.kml"), "count(//*[local-name()='when'])"), "0");
}

TEST_F(Exports, NoRecordsGiveAWholeFile) {
  const Log empty;
  logs_ = {{&empty, "x.log"}};
  EXPECT_EQ(
      Python("import json,sys; print(len(json.load(open(sys.argv[1]))[\"features\"]))", Export("a.geojson")),
      "0\n");
  EXPECT_EQ(Xpath(Export("a.gpx"), "count(//*[local-name()='trkpt'])"), "0");
  EXPECT_EQ(Xpath(Export("a.kml"), "count(//*[local-name()='Folder'])"), "0");
  EXPECT_EQ(Python("import csv,sys; print(len(list(csv.reader(open(sys.argv[1])))))", Export("a.csv")),
            "1\n");
}

TEST_F(Exports, TakeTheRecalibratedValues) {
  std::vector<std::string> lines(257, ", , ");
  lines[0] = " FT840 LSB 3630";
  lines[1] = "S0, 0, 0";
  lines[122] = "S7, 12, 5";
  Recalibration recalibration;
  ASSERT_TRUE(recalibration.Load(Text(lines)));
  ExportOptions options;
  options.recalibration = &recalibration;
  EXPECT_EQ(
      Python("import csv,sys; r=list(csv.DictReader(open(sys.argv[1]))); print(r[0][\"s\"], r[0][\"uv\"], "
             "r[0][\"mv_per_m\"], r[0][\"raw\"])",
             Export("drive.csv", options)),
      "S7 12 5 121\n");
}

TEST_F(Exports, AFullDiskIsToldAndLeavesNoFile) {
  for (const Format format : {Format::kCsv, Format::kGeoJson, Format::kGpx, Format::kKml}) {
    QFile full(QStringLiteral("/dev/full"));
    ASSERT_TRUE(full.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    const ExportOutcome outcome = ExportTo(full, format, logs_);
    EXPECT_FALSE(outcome.ok);
    EXPECT_THAT(outcome.sentence.toStdString(), HasSubstr("No space left"));
  }
  const ExportOutcome nowhere =
      ExportToFile(QString::fromStdString(folder_.Path("no/such/drive.csv")), Format::kCsv, logs_);
  EXPECT_FALSE(nowhere.ok);
  EXPECT_THAT(nowhere.sentence.toStdString(), HasSubstr("No such file or directory"));
}

TEST_F(Exports, CancellingKeepsTheFileThatWasThere) {
  const std::string path = folder_.Write("drive.csv", "before");
  ExportOptions options;
  options.progress = [](std::size_t, std::size_t) { return false; };
  const ExportOutcome outcome = ExportToFile(QString::fromStdString(path), Format::kCsv, logs_, options);
  EXPECT_TRUE(outcome.cancelled);
  EXPECT_FALSE(outcome.ok);
  EXPECT_EQ(RunCommand("cat '" + path + "'").output, "before");
}

}  // namespace
}  // namespace orvandi
