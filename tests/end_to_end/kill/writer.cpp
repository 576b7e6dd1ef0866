// Saves the configuration and logs numbered records as fast as the disk allows, until it is killed.
// Usage: end_to_end_writer FOLDER [RECORDS]
// Begins as the program does, with the records that the last drive has left. The number of the last record
// made stands in the file "made"; with RECORDS given it ends after so many, as hard as a kill ends it.
#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "app/application.h"
#include "desktop/platform_factory.h"
#include "desktop/ports/qt_worker.h"
#include "support/scripted_ports.h"
#include "text/text.h"

namespace {

constexpr int kDigits = 8;
constexpr std::chrono::seconds kPatience{60};

// The number of the last record made, in a file that is overwritten in place.
class Made {
 public:
  explicit Made(const std::string& folder)
      : file_(::open((folder + "/made").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666)) {}
  int Read() const {
    std::array<char, kDigits + 1> digits{};
    return ::pread(file_, digits.data(), kDigits, 0) == kDigits ? std::atoi(digits.data()) : 0;
  }
  bool Write(int number) const {
    std::array<char, kDigits + 1> digits{};
    std::snprintf(digits.data(), digits.size(), "%0*d", kDigits, number);
    return ::pwrite(file_, digits.data(), kDigits, 0) == kDigits;
  }

 private:
  int file_;
};

// Everything is scripted but the files and the thread that writes them.
class Writer {
 public:
  explicit Writer(const std::string& folder)
      : made_(folder),
        files_(kestrum::MakeFileStore(QString::fromLocal8Bit(folder.c_str()))),
        worker_([](const kestrum::QtWorker::Step& done) { done(); }, files_) {
    world_.program.folder = folder;
    app_ = std::make_unique<kestrum::Application>(Ports());
    app_->config.SetDefaults();
    app_->log.RecoverLastDrive();
    app_->log.NotLogging = false;
    number_ = made_.Read();
  }

  // Two configurations of very different length in turn, each with one word all through.
  void SaveConfiguration(bool is_long) {
    auto& settings = app_->state.settings;
    settings.TxHeight = is_long ? "long" : "short";
    for (std::size_t i = 0; i < settings.TxAntennas.size(); ++i) {
      settings.TxAntennas.at(i) = is_long ? std::string(500, 'L') : std::string(i == 0 ? "S" : "");
    }
    app_->config.SaveCfg();
  }
  void AddRecord() {
    ++number_;
    if (!made_.Write(number_)) std::abort();
    const kestrum::Site site{"GPS Ok",
                             "5157.1234N",
                             "00532.1234E",
                             "1.25 km",
                             std::to_string(number_) + " m",
                             "123" + std::string(kestrum::kDegree)};
    kestrum::Reading reading;
    reading.raw = 128;
    reading.converted = {"S9", "50.0", "0.5"};
    app_->log.AddLogRecord({2024, 5, 1, 12, 0, 0}, site, reading);
    // As in a car, the disk has time for a record before the next one comes.
    if (!worker_.Finish(kPatience)) std::abort();
  }
  bool Finish() { return worker_.Finish(kPatience); }
  std::string Complaint() const {
    return world_.dialogs.messages.empty() ? std::string() : world_.dialogs.messages.front().text;
  }

 private:
  kestrum::Ports Ports() {
    const kestrum::Ports all = world_.ports();
    return {all.serial, all.links,   all.dialogs, all.clock, all.pump,
            all.beeper, all.program, all.windows, *files_,   worker_};
  }

  Made made_;
  kestrum::test::ScriptedPorts world_;
  std::shared_ptr<kestrum::FileStore> files_;
  kestrum::QtWorker worker_;
  std::unique_ptr<kestrum::Application> app_;
  int number_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const QCoreApplication toolkit(argc, argv);
  const int most = argc > 2 ? std::atoi(argv[2]) : -1;
  Writer writer(argv[1]);
  if (!writer.Finish()) return 1;
  int records = 0;
  for (int round = 0; most != 0; ++round) {
    writer.SaveConfiguration(round % 2 == 1);
    for (int record = 0; record < 100; ++record) {
      if (records++ == most) std::_Exit(0);
      writer.AddRecord();
    }
    if (const std::string complaint = writer.Complaint(); !complaint.empty()) {
      std::fprintf(stderr, "%s\n", complaint.c_str());
      return 1;
    }
    std::puts("round");
    std::fflush(stdout);
  }
  return 0;
}
