#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <string>

#include "support/log_text.h"
#include "window/orvandi_window.h"

namespace orvandi::test {

// A window with a folder for its files. Settings are empty at the start of each test.
class WindowTest : public ::testing::Test {
 protected:
  WindowTest();
  ~WindowTest() override;

  OrvandiWindow& Open(const StartOptions& options);
  // Opens the window with these logs and waits until they are read.
  OrvandiWindow& OpenLogs(const QStringList& paths);
  QString Write(const std::string& name, const std::string& bytes);
  QString Path(const std::string& name) const { return QString::fromStdString(folder_.Path(name)); }
  void Append(const std::string& name, const std::string& bytes) { folder_.Append(name, bytes); }

  template <typename Widget>
  Widget* Find(const char* name) const {
    auto* widget = window_->findChild<Widget*>(QString::fromLatin1(name));
    if (widget == nullptr) ADD_FAILURE() << "no " << name;
    return widget;
  }
  void Trigger(const char* action) const;
  QString Notice() const;
  QString Told() const;
  std::size_t Shown() const { return window_->TheSession().ShownCount(); }
  static bool Wait(const std::function<bool()>& until);
  bool WaitIdle() const;

  Folder folder_;
  std::unique_ptr<OrvandiWindow> window_;
};

}  // namespace orvandi::test
