#include "desktop/forms/form_window.h"

#include <QCloseEvent>
#include <QLineEdit>
#include <QScreen>

#include "desktop/desktop_fixture.h"
#include "desktop/twips.h"
#include "support_process/qt_waits.h"

namespace kestrum::test {
namespace {

class FormWindowTest : public BoundForms {
 protected:
  QWidget* Main() { return Window(QStringLiteral("Form1")); }
};

TEST_F(FormWindowTest, TheWindowFollowsCaptionAndVisibility) {
  forms.form1.caption = "Kestrum Auto field strenght logger V1.02";
  EXPECT_TRUE(Main()->isHidden());
  ShowForm1();
  EXPECT_TRUE(Main()->isVisible());
  EXPECT_EQ(Main()->windowTitle(), QStringLiteral("Kestrum Auto field strenght logger V1.02"));
  forms.form1.visible = false;
  binder.Sync();
  EXPECT_TRUE(Main()->isHidden());
}

TEST_F(FormWindowTest, AShownWindowIsActivatedOnceEachTime) {
  int activations = 0;
  forms.form1.activate = [&activations] { ++activations; };
  ShowForm1();
  ASSERT_TRUE(process::WaitFor([&] { return activations > 0; }));
  const int first = activations;
  forms.form1.visible = false;
  binder.Sync();
  QApplication::processEvents();
  ShowForm1();
  ASSERT_TRUE(process::WaitFor([&] { return activations > first; }));
}

TEST_F(FormWindowTest, ShowingAnOpenWindowBringsItToTheFront) {
  forms.form3.Show();
  forms.form2.Show();
  binder.Sync();
  QWidget* info = Window(QStringLiteral("Form2"));
  QWidget* editor = Window(QStringLiteral("Form3"));
  for (QWidget* window : {editor, info}) {
    (window == editor ? static_cast<Form&>(forms.form3) : forms.form2).Show();
    binder.Sync();
    EXPECT_TRUE(process::WaitFor([window] { return QApplication::activeWindow() == window; }))
        << qPrintable(window->objectName());
  }
}

TEST_F(FormWindowTest, ClosingAsksTheHandlerAndDoesNotHideByItself) {
  ShowForm1();
  int closes = 0;
  forms.form1.close = [&closes] { ++closes; };
  Main()->close();
  EXPECT_EQ(closes, 1);
  EXPECT_TRUE(Main()->isVisible());
}

TEST_F(FormWindowTest, PositionsAreTwips) {
  forms.form1.left = 1500;
  forms.form1.top = 750;
  ShowForm1();
  EXPECT_EQ(Main()->pos(), QPoint(100, 50));
  Main()->move(40, 30);
  QApplication::processEvents();
  EXPECT_EQ(forms.form1.left, 600);
  EXPECT_EQ(forms.form1.top, 450);
}

TEST_F(FormWindowTest, APositionOnNoScreenIsPulledBack) {
  for (const auto& [left, top] :
       {std::pair{900000.0F, 750.0F}, {-900000.0F, 750.0F}, {1500.0F, -900000.0F}}) {
    forms.form1.left = left;
    forms.form1.top = top;
    ShowForm1();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_TRUE(screen.contains(Main()->pos())) << left << " " << top;
  }
}

TEST_F(FormWindowTest, AWindowOpensWholeOnItsScreen) {
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  forms.form1.left = static_cast<float>(ToTwips(screen.right() - 400));
  forms.form1.top = static_cast<float>(ToTwips(screen.bottom() - 300));
  ShowForm1();
  EXPECT_TRUE(process::WaitFor([&] { return screen.contains(Main()->frameGeometry()); }))
      << Main()->x() << ", " << Main()->y() << ", " << Main()->width() << " x " << Main()->height();
}

struct KeyCase {
  Qt::Key key;
  Qt::KeyboardModifier modifier;
  Key expected;
};

TEST_F(FormWindowTest, TheFormSeesItsKeysBeforeATextBoxAndOnlyOnce) {
  ShowForm1();
  std::vector<Key> seen;
  forms.form1.key_down = [&seen](Key key) {
    seen.push_back(key);
    return true;
  };
  auto* edit = Find<QLineEdit>(QStringLiteral("Form1"), QStringLiteral("txtFrequency"));
  edit->setFocus();
  const KeyCase cases[] = {{Qt::Key_F1, Qt::NoModifier, Key::kF1},
                           {Qt::Key_F3, Qt::NoModifier, Key::kF3},
                           {Qt::Key_F4, Qt::NoModifier, Key::kF4},
                           {Qt::Key_F5, Qt::NoModifier, Key::kF5},
                           {Qt::Key_F4, Qt::AltModifier, Key::kAltF4}};
  for (const KeyCase& one : cases) {
    seen.clear();
    QTest::keyClick(edit, one.key, one.modifier);
    EXPECT_EQ(seen, std::vector{one.expected});
  }
  seen.clear();
  QTest::keyClick(edit, Qt::Key_F6);
  QTest::keyClick(edit, Qt::Key_F3, Qt::ControlModifier);
  QTest::keyClick(edit, Qt::Key_7);
  EXPECT_TRUE(seen.empty());
  EXPECT_EQ(forms.form1.txtFrequency.text, "7");
}

TEST_F(FormWindowTest, AKeyThatTheFormDoesNotTakeIsOfferedOnce) {
  ShowForm1();
  int offers = 0;
  forms.form1.key_down = [&offers](Key /*key*/) {
    ++offers;
    return false;
  };
  auto* edit = Find<QLineEdit>(QStringLiteral("Form1"), QStringLiteral("txtFrequency"));
  edit->setFocus();
  QTest::keyClick(edit, Qt::Key_F5);
  EXPECT_EQ(offers, 1);
}

TEST_F(FormWindowTest, AKeyThatIsHeldDownCountsOnce) {
  ShowForm1();
  int presses = 0;
  forms.form1.key_down = [&presses](Key /*key*/) {
    ++presses;
    return true;
  };
  QKeyEvent first(QEvent::KeyPress, Qt::Key_F3, Qt::NoModifier);
  QKeyEvent repeat(QEvent::KeyPress, Qt::Key_F3, Qt::NoModifier, QString(), true);
  QApplication::sendEvent(Main(), &first);
  QApplication::sendEvent(Main(), &repeat);
  EXPECT_EQ(presses, 1);
}

TEST_F(FormWindowTest, TheMinimalDisplayHasItsOwnKeys) {
  forms.form5.visible = true;
  binder.Sync();
  Key seen = Key::kEnter;
  forms.form5.key_down = [&seen](Key key) {
    seen = key;
    return true;
  };
  QTest::keyClick(Window(QStringLiteral("Form5")), Qt::Key_F5);
  EXPECT_EQ(seen, Key::kF5);
}

}  // namespace
}  // namespace kestrum::test
