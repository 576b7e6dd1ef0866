#include "panel.h"

#include <QApplication>
#include <QTest>
#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>

#include "support_process/qt_waits.h"

namespace kestrum::end_to_end {
namespace {

namespace fs = std::filesystem;

constexpr const char* kNoBus = "unix:path=/nonexistent";

}  // namespace

Panel::Panel()
    : folder_(QCoreApplication::applicationDirPath().toStdString()), rig_(File("rig-commands.txt")) {
  ClearFolder();
  // The program of the test before has ended the event loop for good; a fresh one may run again.
  QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
  QApplication::exec();
  // A reader that ends at once: these drives have no receiver.
  fs::create_symlink("/bin/true", File("Posdex"));
  // The lock of the single instance is free for each test.
  qputenv("XDG_RUNTIME_DIR", runtime_.path().c_str());
  QObject::connect(&looking_, &QTimer::timeout, &looking_, [this] { LookAtBox(); });
  looking_.start(10);
}

Panel::~Panel() {
  if (app_) desktop_->binder().Enter([this] { app_->ExitWithoutAsking(); });
  windows_.reset();
  app_.reset();
  desktop_.reset();
  for (const pid_t reader : Readers()) ::kill(reader, SIGKILL);
  drive_.reset();
  bus_.reset();
  qputenv("DBUS_SESSION_BUS_ADDRESS", kNoBus);
  ClearFolder();
}

void Panel::BringReader() {
  bus_ = std::make_unique<process::PrivateBus>(runtime_.path().string());
  ASSERT_NE(bus_->address(), "");
  qputenv("DBUS_SESSION_BUS_ADDRESS", bus_->address().c_str());
  fs::remove(File("Posdex"));
  process::Install(KESTRUM_POSDEX, File("Posdex"));
  process::WriteFile(File("posdex.conf"), "source=serial:gps@4800\n");
}

void Panel::ClearFolder() const {
  const fs::path own = QCoreApplication::applicationFilePath().toStdString();
  for (const auto& entry : fs::directory_iterator(folder_)) {
    if (entry.path() != own) fs::remove_all(entry.path());
  }
}

void Panel::Start(const CarSetup& setup, const std::vector<std::string>& drive_arguments,
                  std::size_t config_bytes) {
  constexpr std::array kModels{"FT817", "FT840", "FT847", "FT857", "FT897"};
  process::WriteFile(File("Kestrum.cfg"), ConfigText(setup, folder_).substr(0, config_bytes));
  process::Call call{{KESTRUM_DRIVESIM, "--dir", folder_, "--rig",
                      kModels.at(static_cast<std::size_t>(setup.rig) - 1), "--log", File("rig-commands.txt")},
                     {},
                     {},
                     true};
  call.words.insert(call.words.end(), drive_arguments.begin(), drive_arguments.end());
  if (!bus_) call.words.emplace_back("--no-gps");
  drive_ = std::make_unique<process::Child>(call);
  ASSERT_NE(drive_->ReadLine().find("ready"), std::string::npos);

  // As main does it.
  desktop_ = std::make_unique<Desktop>();
  app_ = std::make_unique<Application>(desktop_->ports());
  windows_ = std::make_unique<Windows>(app_->forms, desktop_->binder());
  desktop_->OnEndRequest([this] { app_->ExitWithoutAsking(); });
  desktop_->binder().Enter([this] { app_->Start({}); });
}

void Panel::TellDrive(const std::string& line) {
  drive_->Tell(line);
  ASSERT_TRUE(process::WaitFor([&] { return rig_.Says("control: " + line); })) << line;
}

QWidget* Panel::Form1() {
  for (QWidget* top : QApplication::topLevelWidgets()) {
    if (top->objectName() == QLatin1String("Form1")) return top;
  }
  return nullptr;
}

void Panel::Press(const char* button) {
  auto* const widget = Find<QPushButton>(button);
  ASSERT_TRUE(widget->isEnabled()) << button;
  QTest::mouseClick(widget, Qt::LeftButton);
}

void Panel::TypeFrequency(const char* text) {
  auto* const box = Find<QLineEdit>("txtFrequency");
  box->selectAll();
  QTest::keyClicks(box, QLatin1String(text));
}

bool Panel::WaitForText(const char* label, const std::string& text) {
  return process::WaitFor([&] { return Text(label) == text; });
}

std::vector<std::string> Panel::Sent(std::size_t count) {
  std::vector<std::string> sent;
  const auto look = [&] {
    const auto all = rig_.Commands();
    sent.assign(all.begin() + static_cast<std::ptrdiff_t>(taken_), all.end());
    taken_ = all.size();
    const auto is_read = [](const std::string& command) {
      return command == kReadMeter || command == kReadStatus;
    };
    sent.erase(std::remove_if(sent.begin(), sent.end(), is_read), sent.end());
  };
  const std::size_t from = taken_;
  const bool enough = process::WaitFor([&] {
    taken_ = from;
    look();
    return sent.size() >= count;
  });
  EXPECT_TRUE(enough);
  return sent;
}

void Panel::LookAtBox() {
  auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
  if (box == nullptr) return;
  if (under_box_) {
    under_box_();
  } else if (box->button(answer_) != nullptr) {
    boxes_.push_back({box->windowTitle().toStdString(), box->text().toStdString(), Readings()});
    box->button(answer_)->click();
  }
}

}  // namespace kestrum::end_to_end
