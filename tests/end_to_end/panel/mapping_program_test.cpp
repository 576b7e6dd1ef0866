// The mapping program as the menu starts it, on a display of its own.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>

#include "panel.h"
#include "support_process/qt_waits.h"

namespace kestrum::end_to_end {
namespace {

constexpr std::chrono::seconds kLongPatience{30};

// For the programs that are started meanwhile; this one has its display already.
class Variable {
 public:
  Variable(const char* name, const std::string& value) : name_(name), had_(qEnvironmentVariableIsSet(name)) {
    if (had_) before_ = qgetenv(name);
    qputenv(name, QByteArray::fromStdString(value));
  }
  ~Variable() {
    if (had_) {
      qputenv(name_, before_);
    } else {
      qunsetenv(name_);
    }
  }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  const char* name_;
  bool had_;
  QByteArray before_;
};

class MappingProgram : public Panel {
 protected:
  ~MappingProgram() override {
    for (const pid_t program : process::ProcessesOf(File("Orvandi"))) ::kill(program, SIGKILL);
  }
  // Title and hints of the mapping program's window in one line; empty while there is none.
  static std::string Window() {
    process::Child look({{"/bin/sh", "-c",
                          "id=$(xwininfo -root -tree | grep '(\"Orvandi\"' | head -n 1 | awk '{print $1}'); "
                          "[ -z \"$id\" ] || xprop -id \"$id\" _NET_WM_NAME WM_HINTS | tr '\\n' ' '; echo"},
                         {},
                         {}});
    return look.ReadLine();
  }
};

TEST_F(MappingProgram, ComesUpMinimisedAndShowsTheDriveThatIsBeingLogged) {
  process::Install(KESTRUM_ORVANDI, File("Orvandi"));
  process::Child display({{"Xvfb", "-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp"},
                          {},
                          {},
                          false,
                          File("display.txt")});
  const Variable number("DISPLAY", ":" + display.ReadLine());
  const Variable platform("QT_QPA_PLATFORM", "xcb");
  const Variable settings("XDG_CONFIG_HOME", File("settings"));

  CarSetup setup;
  setup.interval_ms = 1000;
  Start(setup);
  Press("cmdLoggin");
  ASSERT_TRUE(process::WaitFor([this] { return std::filesystem::exists(File("RSSI-GPS.log.pending")); },
                               kLongPatience));
  Menu("mnuOrvandi");
  EXPECT_TRUE(Find<QAction>("mnuOrvandi")->isChecked());
  // Its title names the log: the records of a block that is not written yet are on its map.
  std::string window;
  const auto shows_the_drive = [&window] {
    window = Window();
    return window.find("RSSI-GPS.log") != std::string::npos;
  };
  EXPECT_TRUE(process::WaitFor(shows_the_drive, kLongPatience)) << window;
  EXPECT_NE(window.find("Initial state is Iconic State"), std::string::npos) << window;
  EXPECT_FALSE(std::filesystem::exists(File("RSSI-GPS.log")));
  EXPECT_EQ(process::ProcessesOf(File("Orvandi")).size(), 1U);
}

}  // namespace
}  // namespace kestrum::end_to_end
