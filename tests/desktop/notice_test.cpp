// Boxes that nobody waits for, and texts of any length in every kind of box.
#include <gtest/gtest.h>

#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include "desktop/ports/box_text.h"
#include "desktop/ports/qt_dialogs.h"
#include "support/scripted_ports.h"

namespace kestrum::test {
namespace {

class NoticeTest : public ::testing::Test {
 protected:
  void TearDown() override {
    for (QMessageBox* box : Boxes()) box->close();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  static std::vector<QMessageBox*> Boxes() {
    std::vector<QMessageBox*> boxes;
    for (QWidget* window : QApplication::topLevelWidgets()) {
      auto* box = qobject_cast<QMessageBox*>(window);
      if (box != nullptr && box->isVisible()) boxes.push_back(box);
    }
    return boxes;
  }

  ScriptedProgram program_;
  QtDialogs dialogs_{program_, [] {}};
};

TEST_F(NoticeTest, StandsThereWhileTheProgramGoesOn) {
  dialogs_.Notify("t V1.02", "Error saving data \r\n<b>", Icon::kCritical);
  ASSERT_EQ(Boxes().size(), 1U);
  const QMessageBox& box = *Boxes().front();
  EXPECT_EQ(box.windowTitle(), QStringLiteral("t V1.02"));
  EXPECT_EQ(box.text(), QStringLiteral("Error saving data \n<b>"));
  EXPECT_EQ(box.textFormat(), Qt::PlainText);
  EXPECT_EQ(box.icon(), QMessageBox::Critical);
  EXPECT_EQ(box.windowModality(), Qt::NonModal);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(NoticeTest, AnOpenOneTakesTheNewText) {
  dialogs_.Notify("t", "first", Icon::kCritical);
  dialogs_.Notify("t", "second", Icon::kCritical);
  ASSERT_EQ(Boxes().size(), 1U);
  EXPECT_EQ(Boxes().front()->text(), QStringLiteral("second"));
  EXPECT_EQ(Boxes().front()->icon(), QMessageBox::Critical);
  // A lesser notice does not take the place of a loss.
  dialogs_.Notify("t", "third", Icon::kExclamation);
  EXPECT_EQ(Boxes().size(), 2U);
  dialogs_.Notify("another", "fourth", Icon::kCritical);
  EXPECT_EQ(Boxes().size(), 3U);
}

TEST_F(NoticeTest, OneThatWasAnsweredOpensAnew) {
  dialogs_.Notify("t", "first", Icon::kCritical);
  const QPointer<QMessageBox> first = Boxes().front();
  first->button(QMessageBox::Ok)->click();
  EXPECT_TRUE(Boxes().empty());
  dialogs_.Notify("t", "second", Icon::kCritical);
  EXPECT_EQ(Boxes().size(), 1U);
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(first.isNull()) << "a box that was closed is gone";
  EXPECT_EQ(Boxes().size(), 1U);
}

TEST_F(NoticeTest, OneUnderAnOpenBoxCanBeAnsweredAndOutlivesTheBox) {
  bool can_be_answered = false;
  QTimer::singleShot(0, qApp, [&] {
    QWidget* const question = QApplication::activeModalWidget();
    ASSERT_NE(question, nullptr);
    dialogs_.Notify("t", "meanwhile", Icon::kCritical);
    for (const QMessageBox* box : Boxes()) {
      if (box->windowTitle() == QStringLiteral("t")) can_be_answered = box->parentWidget() == question;
    }
    static_cast<QDialog*>(question)->reject();
  });
  EXPECT_FALSE(dialogs_.AskYesNo("question", "q", Icon::kQuestion));
  EXPECT_TRUE(can_be_answered);
  ASSERT_EQ(Boxes().size(), 1U);
  EXPECT_EQ(Boxes().front()->text(), QStringLiteral("meanwhile"));
}

TEST_F(NoticeTest, NothingOpensWhenNobodyIsThere) {
  dialogs_.Notify("t", "open", Icon::kCritical);
  dialogs_.Dismiss();
  EXPECT_TRUE(Boxes().empty());
  dialogs_.Notify("t", "late", Icon::kCritical);
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(NoticeTest, NothingOpensAfterTheEnd) {
  program_.End();
  dialogs_.Notify("t", "late", Icon::kCritical);
  EXPECT_TRUE(Boxes().empty());
}

struct LongText {
  const char* what;
  std::string title;
  std::string text;
};

std::vector<LongText> LongTexts() {
  std::string lines;
  for (int i = 0; i < 2000; ++i) lines += "line\r\n";
  std::string words;
  for (int i = 0; i < 20000; ++i) words += "word ";
  return {{"one word", "t", std::string(100000, 'W')},
          {"words", "t", words},
          {"lines", "t", lines},
          {"a path", "t", "SaveCfg\r\n" + std::string(900, 'p') + "/x\r\nNo such file or directory"},
          {"a title", std::string(5000, 'T'), "text"}};
}

void ExpectOnScreen(const QWidget& box, const char* what) {
  const QSize screen = box.screen()->availableGeometry().size();
  EXPECT_LE(box.width(), screen.width()) << what;
  EXPECT_LE(box.height(), screen.height()) << what;
}

TEST_F(NoticeTest, NoBoxIsLargerThanTheScreen) {
  for (const LongText& row : LongTexts()) {
    dialogs_.Notify(row.title, row.text, Icon::kCritical);
    QApplication::processEvents();
    ASSERT_EQ(Boxes().size(), 1U);
    ExpectOnScreen(*Boxes().front(), row.what);
    Boxes().front()->close();
    QTimer::singleShot(0, qApp, [&row] {
      auto* box = static_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      ExpectOnScreen(*box, row.what);
      box->reject();
    });
    dialogs_.AskText(row.title, row.text, std::string(5000, 'a'));
  }
}

TEST_F(NoticeTest, ALongTextWrapsAndKeepsItsEnd) {
  dialogs_.Notify("t", "SaveCfg\r\n" + std::string(300, 'p') + "\r\nNo such file or directory",
                  Icon::kCritical);
  ASSERT_EQ(Boxes().size(), 1U);
  auto* label = Boxes().front()->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
  ASSERT_NE(label, nullptr);
  EXPECT_LE(label->heightForWidth(label->width()), label->height()) << "a line is cut off";
  EXPECT_TRUE(label->text().endsWith(QStringLiteral("\nNo such file or directory")));
}

TEST_F(NoticeTest, TheTitleHasItsRoom) {
  const QString title = QStringLiteral("Kestrum Auto field strenght logger V1.02");
  dialogs_.Notify(title.toStdString(), "Ok", Icon::kInformation);
  ASSERT_EQ(Boxes().size(), 1U);
  QFont bold = Boxes().front()->font();
  bold.setBold(true);
  EXPECT_GT(Boxes().front()->width(), QFontMetrics(bold).horizontalAdvance(title));
}

TEST(BoxText, LeavesAnOrdinaryTextAlone) {
  const QString text = QStringLiteral("Give filename to log the data.\n\nApplication path = /opt/kestrum");
  const QMessageBox box;
  EXPECT_EQ(BoxText(text, box), text);
  EXPECT_EQ(BoxText(QString(), box), QString());
  const QString path = QStringLiteral("Invalide version of /") + QString(70, QLatin1Char('x'));
  EXPECT_EQ(BoxText(path, box), path);
  const QString endless = QString(500, QLatin1Char('x'));
  EXPECT_NE(BoxText(endless, box), endless);
  EXPECT_EQ(BoxText(endless, box).remove(QChar(0x200B)), endless);
  EXPECT_EQ(Shortened(QStringLiteral("abc"), 3), QStringLiteral("abc"));
  EXPECT_EQ(Shortened(QStringLiteral("abcd"), 3), QStringLiteral(u"ab\u2026"));
}

}  // namespace
}  // namespace kestrum::test
