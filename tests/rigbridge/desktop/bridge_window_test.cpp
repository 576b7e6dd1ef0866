#include "bridge_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include "hamlib_rig.h"
#include "support_process/files.h"
#include "support_process/qt_waits.h"

namespace kestrum::rigbridge {
namespace {

using process::WaitFor;

QString Q(const char* text) {
  return QString::fromUtf8(text);
}

class BridgeWindowTest : public testing::Test {
 protected:
  BridgeWindowTest() {
    bridge.Load({});
    EXPECT_TRUE(bridge.Start());
    window = std::make_unique<BridgeWindow>(bridge, rigs);
  }

  template <typename Widget>
  Widget& Find(const char* name) {
    auto* widget = window->findChild<Widget*>(Q(name));
    EXPECT_NE(widget, nullptr) << name;
    return *widget;
  }
  QString TextOf(const char* label) { return Find<QLabel>(label).text(); }

  const std::vector<RigModel> rigs = ListRigs();
  process::Scratch scratch;
  Bridge bridge{[this] { return std::make_unique<HamlibRig>(rigs); }, scratch.path(),
                scratch.File("rigbridge.conf")};
  std::unique_ptr<BridgeWindow> window;
};

TEST_F(BridgeWindowTest, AtTheFirstStartItAsksForTheRig) {
  EXPECT_EQ(window->windowTitle(), Q("Rig bridge"));
  EXPECT_EQ(TextOf("lblRig"), Q("none"));
  EXPECT_EQ(TextOf("lblState"), Q("Choose your rig."));
  EXPECT_EQ(TextOf("lblReading"), Q("no value"));
  EXPECT_EQ(TextOf("lblLink"), Q("Waiting for Kestrum: choose FT840 and Com1 in Rig + Comport."));
  EXPECT_FALSE(Find<QPushButton>("cmdConnect").isEnabled());
  EXPECT_EQ(static_cast<std::size_t>(Find<QListWidget>("lstRigs").count()), rigs.size());
  EXPECT_TRUE(Find<QLabel>("lblNotes").isHidden());
  EXPECT_TRUE(Find<QLabel>("lblComplaint").isHidden());
}

TEST_F(BridgeWindowTest, SearchShortensTheListAndChoosesTheFirst) {
  auto& list = Find<QListWidget>("lstRigs");
  Find<QLineEdit>("txtSearch").setText(Q("yaesu 817"));
  ASSERT_EQ(list.count(), 1);
  EXPECT_EQ(list.currentItem()->text(), Q("Yaesu FT-817"));
  EXPECT_EQ(list.currentItem()->toolTip(), Q("Hamlib's number 1020, driver: Stable"));
  EXPECT_TRUE(Find<QPushButton>("cmdConnect").isEnabled());
  Find<QLineEdit>("txtSearch").setText(Q("no such rig"));
  EXPECT_EQ(list.count(), 0);
  EXPECT_FALSE(Find<QPushButton>("cmdConnect").isEnabled());
}

TEST_F(BridgeWindowTest, ConnectsReadsAndKeepsTheChoice) {
  Find<QLineEdit>("txtSearch").setText(Q("hamlib dummy"));
  EXPECT_FALSE(Find<QComboBox>("cboDevice").isEnabled());
  EXPECT_FALSE(Find<QComboBox>("cboSpeed").isEnabled());
  Find<QComboBox>("cboActAs").setCurrentIndex(1);
  Find<QPushButton>("cmdConnect").click();
  EXPECT_TRUE(WaitFor([&] { return TextOf("lblState") == Q("Reading the rig."); }));
  EXPECT_TRUE(WaitFor([&] { return TextOf("lblReading").contains(Q(" dB to S9, raw ")); }));
  EXPECT_EQ(TextOf("lblRig"), Q("Hamlib Dummy"));
  EXPECT_EQ(TextOf("lblLink"), Q("Waiting for Kestrum: choose FT817 and Com1 in Rig + Comport."));
  EXPECT_EQ(process::ReadFile(scratch.File("rigbridge.conf")),
            "model=1\ndevice=\nspeed=0\nact-as=FT817\nmeter=strength\nscale=default\noffset=0\nlink=com1\n");
  const std::vector<RigModel>& all = rigs;
  window.reset();
  BridgeWindow again(bridge, all);
  EXPECT_EQ(again.findChild<QListWidget*>(Q("lstRigs"))->currentItem()->text(), Q("Hamlib Dummy"));
  EXPECT_EQ(again.findChild<QComboBox*>(Q("cboActAs"))->currentIndex(), 1);
}

TEST_F(BridgeWindowTest, ANetworkRigWantsAHost) {
  Find<QLineEdit>("txtSearch").setText(Q("net rigctl"));
  auto& device = Find<QComboBox>("cboDevice");
  EXPECT_TRUE(device.isEnabled());
  EXPECT_EQ(device.lineEdit()->placeholderText(), Q("host:port, as localhost:7356"));
  EXPECT_FALSE(Find<QComboBox>("cboSpeed").isEnabled());
  device.setCurrentText(Q("localhost:1"));
  Find<QPushButton>("cmdConnect").click();
  EXPECT_TRUE(WaitFor([&] {
    return TextOf("lblState")
        .startsWith(Q("Nobody listens at localhost:1: is the program running, and its remote control on?"));
  }));
  EXPECT_EQ(TextOf("lblRig"), Q("Hamlib NET rigctl at localhost:1"));
}

TEST_F(BridgeWindowTest, ComplaintsAreShownWhileTheyLast) {
  window->show();
  window->SetComplaint(Q("rigbridge.conf line 1: not a setting: \"x\""));
  EXPECT_TRUE(Find<QLabel>("lblComplaint").isVisible());
  window->SetComplaint({});
  EXPECT_FALSE(Find<QLabel>("lblComplaint").isVisible());
}

TEST_F(BridgeWindowTest, ALinkThatIsInTheWayIsTold) {
  bridge.Stop(0);
  process::WriteFile(scratch.File("com1"), "mine");
  Find<QLineEdit>("txtSearch").setText(Q("hamlib dummy"));
  Find<QPushButton>("cmdConnect").click();
  EXPECT_EQ(TextOf("lblComplaint"), QString::fromStdString(scratch.File("com1")) +
                                        Q(": there is a file of that name that is no link."));
  EXPECT_EQ(process::ReadFile(scratch.File("com1")), "mine");
}

}  // namespace
}  // namespace kestrum::rigbridge

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication app(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
