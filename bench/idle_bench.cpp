#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <chrono>

#include "desktop/linux/qt_serial_port.h"
#include "desktop/platform_factory.h"
#include "desktop/ports/qt_event_pump.h"
#include "measured_car.h"
#include "processor.h"
#include "rows.h"
#include "support/scripted_ports.h"
#include "support_process/client.h"
#include "support_process/pty.h"
#include "support_process/qt_waits.h"

// Trouble outside that a careless loop would answer by keeping the processor busy.
namespace kestrum::bench {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

void PrintShare(const std::string& what, double share) {
  Print({what + ", share of a core", "%", {share}, {5, {}}, {}});
}

// Of this process while its events run.
double OwnShare(seconds duration) {
  const double from = ProcessorMs(::getpid());
  process::LetEventsRunFor(duration);
  const double wall = std::chrono::duration<double, std::milli>(duration).count();
  return (ProcessorMs(::getpid()) - from) / wall * 100;
}

// The logger's serial port on a terminal of ours.
struct Line {
  Line() {
    QFile::link(QString::fromStdString(rig.device()), QString::fromStdString(folder.File("com1")));
    port.SetPort(1);
    port.SetSettings(" 9600,N,8,2");
    port.Open();
  }
  process::Scratch folder;
  process::Pty rig;
  QtSerialPort port{QString::fromStdString(folder.path().string())};
};

void MeasureFlood() {
  Line line;
  const std::string noise(4096, '\xAA');
  process::StaysTrueWhileEventsRun(seconds(1), [&] {
    while (line.rig.Write(noise) > 0) {
    }
    return true;
  });
  PrintShare("A rig that has sent noise without an end", OwnShare(seconds(5)));
}

void MeasureVanishedAdapter() {
  Line line;
  line.rig.Unplug();
  process::LetEventsRunFor(seconds(1));
  PrintShare("An adapter that has been pulled out", OwnShare(seconds(5)));
}

void MeasurePump() {
  test::ScriptedProgram program;
  QtEventPump pump(
      program, [] {}, [] {});
  const double from = ProcessorMs(::getpid());
  pump.PumpFor(seconds(5));
  PrintShare("The pump of a long wait", (ProcessorMs(::getpid()) - from) / 5000 * 100);
}

// The rig's port vanishes while the logger reads it at its fastest.
void MeasureLoggerWithoutItsPort() {
  const MeasuredCar car("FT840");
  MeasuredCar::Configure(2, 10, false);
  const auto kestrum = car.StartKestrum(car.rig_port(), {"--start-logging"});
  process::LetRunFor(seconds(3));
  car.TellDrive("vanish");
  process::LetRunFor(seconds(1));
  Print({"The logger at 10 ms, its port vanished, share of a core",
         "%",
         {ShareOf(kestrum->pid(), seconds(10))},
         {50, {}},
         {}});
}

void MeasureReaderWithoutAReceiver() {
  const MeasuredCar car("FT840");
  const auto reader = car.StartReader("serial:" + car.File("nowhere"));
  process::LetRunFor(seconds(3));
  PrintShare("The GPS reader, its receiver not plugged in", ShareOf(reader->pid(), seconds(10)));
}

// Its input has ended and its client has gone.
void MeasureDriveAlone() {
  const process::Scratch folder;
  process::Child drive(
      {{MeasuredCar::ProgramFolder() + "/drivesim", "--dir", folder.path().string(), "--no-gps"}, {}, {}});
  drive.ReadLine();
  const process::Bytes kReadStatus{0, 0, 0, 0, 0xE7};
  process::Client(folder.path() / "com1").Ask(kReadStatus, 1);
  PrintShare("The simulated drive, everybody gone", ShareOf(drive.pid(), seconds(5)));
}

}  // namespace
}  // namespace kestrum::bench

int main(int argc, char** argv) {
  using namespace kestrum::bench;
  const QCoreApplication toolkit(argc, argv);
  MeasureFlood();
  MeasureVanishedAdapter();
  MeasurePump();
  MeasureLoggerWithoutItsPort();
  MeasureReaderWithoutAReceiver();
  MeasureDriveAlone();
}
