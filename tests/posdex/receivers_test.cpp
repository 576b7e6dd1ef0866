#include <gtest/gtest.h>

#include <QFile>
#include <memory>
#include <vector>

#include "harness.h"
#include "reader.h"

// What receivers of many makers send, played at its own pace, and the positions that come out.
namespace kestrum::posdex {
namespace {

// A position of the drive, tenths of a second after noon: each lies a little further north.
QByteArray Place(int tenths) {
  return "51" + QByteArray::number(10 + tenths / 100) + "." +
         QByteArray::number(tenths % 100 * 100).rightJustified(4, '0') + "0,N,00532.00000,E";
}
QString LatitudeOf(int tenths) {
  return QString::fromLatin1("51" + QByteArray::number(10 + tenths / 100) + "." +
                             QByteArray::number(tenths % 100 * 100).rightJustified(4, '0') + "N");
}
QByteArray Time(int tenths) {
  return QByteArray::number(120000 + tenths / 10) + "." + QByteArray::number(tenths % 10) + "0";
}
QByteArray Rmc(int tenths) {
  return "GPRMC," + Time(tenths) + ",A," + Place(tenths) + ",10.0,45.0,010125,,,A";
}
QByteArray LostRmc(int tenths) {
  return "GPRMC," + Time(tenths) + ",V,,,,,,,010125,,,N";
}
QByteArray Gga(int tenths) {
  return "GPGGA," + Time(tenths) + "," + Place(tenths) + ",1,08,1.0,100.0,M,46.0,M,,";
}
QByteArray Gns(int tenths) {
  return "GNGNS," + Time(tenths) + "," + Place(tenths) + ",AA,12,0.9,100.0,46.0,,,V";
}
QByteArray Gll(int tenths) {
  return "GPGLL," + Place(tenths) + "," + Time(tenths) + ",A,A";
}
QByteArray Bare(const QByteArray& body) {
  return "$" + body + "\r\n";
}

struct Recording {
  const char* name;
  QByteArray bytes;
  std::vector<int> expected;  // tenths of a second of the positions with "A"
  int losses = 0;             // changes from "A" to "V" before the end of the recording
};

constexpr int kLength = 80;  // tenths of a second

template <class Sentences>
Recording Make(const char* name, int step, Sentences sentences) {
  Recording recording{name, {}, {}};
  for (int tenths = 0; tenths < kLength; tenths += step) {
    recording.bytes += sentences(tenths);
    recording.expected.push_back(tenths);
  }
  return recording;
}

std::vector<Recording> Recordings() {
  std::vector<Recording> all{
      Make("RMC and GGA every second", 10, [](int t) { return Nmea(Rmc(t)) + Nmea(Gga(t)); }),
      Make("GGA before RMC", 10, [](int t) { return Nmea(Gga(t)) + Nmea(Rmc(t)); }),
      Make("a proprietary RMC beside the real one", 10,
           [](int t) {
             return Nmea(Rmc(t)) + Nmea("PGRMC," + Time(t) + ",V," + Place(70) + ",99,99,010125,,,A");
           }),
      Make("RMC every 4 s, GGA every second", 10,
           [](int t) { return (t % 40 == 0 ? Nmea(Rmc(t)) : QByteArray()) + Nmea(Gga(t)); }),
      Make("RMC every 5 s, GGA every second", 10,
           [](int t) { return (t % 50 == 0 ? Nmea(Rmc(t)) : QByteArray()) + Nmea(Gga(t)); }),
      Make("GGA ten times a second, RMC once", 1,
           [](int t) { return Nmea(Gga(t)) + (t % 10 == 0 ? Nmea(Rmc(t)) : QByteArray()); }),
      Make("GGA ten times a second, RMC once and late", 1,
           [](int t) { return Nmea(Gga(t)) + (t % 10 == 1 ? Nmea(Rmc(t - 1)) : QByteArray()); }),
      Make("RMC ten times a second, GGA once", 1,
           [](int t) { return Nmea(Rmc(t)) + (t % 10 == 0 ? Nmea(Gga(t)) : QByteArray()); }),
      Make("RMC and GGA without checksums", 10, [](int t) { return Bare(Rmc(t)) + Bare(Gga(t)); }),
      Make("GNS alone", 10, [](int t) { return Nmea(Gns(t)); }),
      Make("GLL alone", 10, [](int t) { return Nmea(Gll(t)); }),
  };
  Recording lost = Make("a loss 0.05 s after each third fix", 10, [](int t) {
    return Nmea(Rmc(t)) +
           (t % 30 == 20 ? Nmea(LostRmc(t).replace(Time(t), Time(t).chopped(2) + "05")) : QByteArray());
  });
  lost.losses = 2;
  Recording at_once = Make("a loss without a time right behind a fix", 10, [](int t) {
    return Nmea(Rmc(t)) + (t % 30 == 20 ? Nmea("GPRMC,,V,,,,,,,,,,N") : QByteArray());
  });
  at_once.losses = 2;
  all.push_back(lost);
  all.push_back(at_once);
  return all;
}

// A reader of one recording, and what it has said.
class Played {
 public:
  Played(const Recording& recording, const QString& folder, int number) {
    SourceChoice choice;
    choice.kind = SourceChoice::Kind::kFile;
    choice.path = QStringLiteral("%1.nmea").arg(number);
    QFile file(folder + QLatin1Char('/') + choice.path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(recording.bytes);
    file.close();
    reader_ = std::make_unique<Reader>(MakeSource(choice, folder));
    QObject::connect(reader_.get(), &Reader::TextsChanged, [this](const GpsTexts& texts) { Hear(texts); });
    reader_->Start();
  }
  bool Ended() const { return reader_->State() == Q("the recording has ended"); }

  QStringList latitudes;  // each new one with "A"
  int losses = 0;
  QString text_of_last;

 private:
  void Hear(const GpsTexts& texts) {
    const bool valid = texts.validity == Q("A");
    if (valid && (latitudes.isEmpty() || latitudes.last() != texts.latitude))
      latitudes.append(texts.latitude);
    if (valid_ && !valid && !Ended()) ++losses;
    valid_ = valid;
  }

  std::unique_ptr<Reader> reader_;
  bool valid_ = false;
};

TEST(Receivers, EveryPositionComesOutOnceAndInOrder) {
  const QTemporaryDir folder;
  const std::vector<Recording> recordings = Recordings();
  std::vector<std::unique_ptr<Played>> players;
  for (std::size_t i = 0; i < recordings.size(); ++i)
    players.push_back(std::make_unique<Played>(recordings[i], folder.path(), static_cast<int>(i)));
  for (std::size_t i = 0; i < recordings.size(); ++i) {
    const Recording& recording = recordings[i];
    const Played& played = *players[i];
    ASSERT_TRUE(WaitFor([&] { return played.Ended(); }, milliseconds(20000))) << recording.name;
    QStringList expected;
    for (const int tenths : recording.expected) expected.append(LatitudeOf(tenths));
    EXPECT_EQ(played.latitudes, expected) << recording.name;
    EXPECT_EQ(played.losses, recording.losses) << recording.name;
    std::printf("%-44s expected %3d, seen %3d positions; losses expected %d, seen %d\n", recording.name,
                static_cast<int>(expected.size()), static_cast<int>(played.latitudes.size()),
                recording.losses, played.losses);
  }
}

}  // namespace
}  // namespace kestrum::posdex
