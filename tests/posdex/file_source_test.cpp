#include "file_source.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include "harness.h"

namespace kestrum::posdex {
namespace {

QByteArray Rmc(const char* time) {
  return Nmea(QByteArray("GPRMC,") + time + ",A,5157.00000,N,00532.00000,E,10.0,45.0,010125,,,A");
}
QByteArray Gga(const char* time) {
  return Nmea(QByteArray("GPGGA,") + time + ",5157.00000,N,00532.00000,E,1,08,1.0,100.0,M,46.0,M,,");
}

class FileSourceTest : public testing::Test {
 protected:
  void Play(const QByteArray& recording, bool loop = false) {
    QFile file(folder_.filePath(Q("drive.nmea")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(recording);
    file.close();
    Open(loop);
  }
  void Open(bool loop) {
    SourceChoice choice;
    choice.kind = SourceChoice::Kind::kFile;
    choice.path = Q("drive.nmea");
    choice.loop = loop;
    source_ = MakeSource(choice, folder_.path());
    QObject::connect(source_.get(), &Source::LineReceived, [this](const QByteArray& line) {
      lines_.append(line);
      times_ms_.append(clock_.elapsed());
    });
    QObject::connect(source_.get(), &Source::StateChanged,
                     [this](const SourceState& state) { state_ = state; });
    clock_.start();
    source_->Start();
  }
  bool Ended() const { return state_.link == SourceState::Link::kEnded; }

  QTemporaryDir folder_;
  QElapsedTimer clock_;
  QList<QByteArray> lines_;
  QList<qint64> times_ms_;
  SourceState state_;
  std::unique_ptr<Source> source_;
};

TEST_F(FileSourceTest, PlaysAtThePaceOfTheRecording) {
  Play(Rmc("120000.00") + Gga("120000.00") + Rmc("120000.40") + Rmc("120001.00"));
  ASSERT_TRUE(WaitFor([this] { return Ended(); }, milliseconds(5000)));
  ASSERT_EQ(lines_.size(), 4);
  EXPECT_EQ(lines_[1], Gga("120000.00").trimmed());
  // Never early; late by what the machine costs.
  EXPECT_GE(times_ms_[2], 395);
  EXPECT_GE(times_ms_[3], 995);
}

TEST_F(FileSourceTest, GoesOnPastMidnight) {
  Play(Rmc("235959.80") + Rmc("000000.00"));
  ASSERT_TRUE(WaitFor([this] { return Ended(); }, milliseconds(5000)));
  EXPECT_GE(times_ms_[1], 195);
}

TEST_F(FileSourceTest, TimesThatJumpBackCostNothing) {
  Play(Rmc("130000.00") + Rmc("120000.00") + Rmc("120000.10"));
  ASSERT_TRUE(WaitFor([this] { return Ended(); }, milliseconds(5000)));
  EXPECT_EQ(lines_.size(), 3);
}

TEST_F(FileSourceTest, StartsAgainWhenAsked) {
  Play(Rmc("120000.00"), true);
  EXPECT_TRUE(WaitFor([this] { return lines_.size() >= 3; }, milliseconds(10000)));
  EXPECT_FALSE(Ended());
}

TEST_F(FileSourceTest, HandsOutALastLineWithoutItsEnd) {
  Play(Rmc("120000.00").trimmed());
  ASSERT_TRUE(WaitFor([this] { return Ended(); }, milliseconds(5000)));
  EXPECT_EQ(lines_, QList<QByteArray>{Rmc("120000.00").trimmed()});
}

TEST_F(FileSourceTest, SurvivesGarbage) {
  QByteArray garbage(200000, '\0');
  for (qsizetype i = 0; i < garbage.size(); ++i) garbage[i] = static_cast<char>(i * 7 + i / 251);
  garbage += QByteArray(100000, 'x');
  Play(garbage + "\n" + Rmc("120000.00"));
  ASSERT_TRUE(WaitFor([this] { return Ended(); }, milliseconds(20000)));
  ASSERT_FALSE(lines_.isEmpty());
  EXPECT_EQ(lines_.last(), Rmc("120000.00").trimmed());
}

TEST_F(FileSourceTest, AnEmptyRecordingEnds) {
  Play("");
  EXPECT_TRUE(WaitFor([this] { return Ended(); }, milliseconds(5000)));
}

TEST_F(FileSourceTest, WaitsForAFileThatIsMissing) {
  Open(false);
  EXPECT_EQ(state_, (SourceState{SourceState::Link::kFailed, Q("no such file")}));
  QFile file(folder_.filePath(Q("drive.nmea")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(Rmc("120000.00"));
  file.close();
  EXPECT_TRUE(WaitFor([this] { return Ended(); }, milliseconds(5000)));
  EXPECT_EQ(lines_.size(), 1);
}

TEST_F(FileSourceTest, AFolderIsNoFile) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir(Q("drive.nmea")));
  Open(false);
  EXPECT_EQ(state_, (SourceState{SourceState::Link::kFailed, Q("not a file")}));
}

TEST_F(FileSourceTest, TellsItsName) {
  Play("", true);
  EXPECT_EQ(source_->Description(), Q("recording drive.nmea, repeated"));
}

}  // namespace
}  // namespace kestrum::posdex
