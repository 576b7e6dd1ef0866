#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/application.h"
#include "car.h"
#include "desktop/desktop.h"
#include "desktop/forms/windows.h"

namespace kestrum::end_to_end {

// A message box that came up.
struct SeenBox {
  std::string title;
  std::string text;
  std::size_t readings = 0;  // of the S-meter so far
};

// The whole program in this process, put together as the real one is, on a rig that drivesim plays: its real
// widgets can be pressed and the rig's end of the line tells what that sent.
class Panel : public testing::Test {
 protected:
  Panel();
  ~Panel() override;

  // The rig of the setup and the program, with as many bytes of the configuration as are left.
  void Start(const CarSetup& setup, const std::vector<std::string>& drive_arguments = {},
             std::size_t config_bytes = std::string::npos);
  // Before Start: the real GPS reader on a session bus of its own, with the receiver of the drive.
  void BringReader();
  std::vector<pid_t> Readers() const { return process::ProcessesOf(File("Posdex")); }
  void TellDrive(const std::string& line);

  template <class T>
  T* Find(const char* name) {
    QWidget* const window = Form1();
    T* const found = window != nullptr ? window->findChild<T*>(QLatin1String(name)) : nullptr;
    if (found == nullptr) throw std::runtime_error(std::string("no control ") + name);
    return found;
  }
  static QWidget* Form1();
  void Press(const char* button);
  void ChooseMode(const char* option) { Find<QRadioButton>(option)->click(); }
  void Menu(const char* item) { Find<QAction>(item)->trigger(); }
  void TypeFrequency(const char* text);
  std::string Text(const char* label) {
    return Find<QWidget>(label)->property("text").toString().toStdString();
  }
  std::string Typed(const char* box) { return Find<QLineEdit>(box)->text().toStdString(); }
  // Runs the window until the label shows it.
  bool WaitForText(const char* label, const std::string& text);

  // Commands at the rig's end since the last call, without reads of the S-meter; waits for as many.
  std::vector<std::string> Sent(std::size_t count);
  std::size_t Readings() const { return rig_.Count(kReadMeter) + rig_.Count(kReadStatus); }
  const RigLog& rig() const { return rig_; }
  // Boxes that come up from now on are answered with this button.
  void AnswerBoxesWith(QMessageBox::StandardButton button) { answer_ = button; }
  // Boxes stay open from now on; this runs every 10 ms while one is. Whoever opens a box returns only when it
  // is closed, so a test looks at it from here.
  void UnderABox(std::function<void()> look) { under_box_ = std::move(look); }
  const std::vector<SeenBox>& boxes() const { return boxes_; }

  Desktop& desktop() { return *desktop_; }
  Application& app() { return *app_; }
  std::string File(const std::string& name) const { return folder_ + "/" + name; }
  std::vector<Block> Log() const { return ParseLog(process::ReadFile(File("RSSI-GPS.log"))); }

 private:
  void ClearFolder() const;
  void LookAtBox();

  std::string folder_;
  process::Scratch runtime_;
  RigLog rig_;
  std::unique_ptr<process::PrivateBus> bus_;
  std::unique_ptr<process::Child> drive_;
  std::unique_ptr<Desktop> desktop_;
  std::unique_ptr<Application> app_;
  std::unique_ptr<Windows> windows_;
  QTimer looking_;
  std::function<void()> under_box_;
  QMessageBox::StandardButton answer_ = QMessageBox::Ok;
  std::vector<SeenBox> boxes_;
  std::size_t taken_ = 0;
};

}  // namespace kestrum::end_to_end
