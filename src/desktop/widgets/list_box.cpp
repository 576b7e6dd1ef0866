#include "desktop/widgets/list_box.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextOption>

namespace kestrum {

ListBox::ListBox(int columns, int lines, QWidget* parent)
    : QPlainTextEdit(parent), columns_(columns), lines_(lines) {
  setReadOnly(true);
  setLineWrapMode(QPlainTextEdit::NoWrap);
  setTabChangesFocus(true);
  setUndoRedoEnabled(false);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPointSizeF(QFontInfo(font()).pointSizeF());
  setFont(fixed);
}

void ListBox::AlignFieldsAt(const std::vector<int>& characters) {
  aligned_ = true;
  QList<QTextOption::Tab> stops;
  for (const int character : characters) {
    stops.append(QTextOption::Tab(fontMetrics().averageCharWidth() * character, QTextOption::LeftTab));
  }
  QTextOption option = document()->defaultTextOption();
  option.setTabs(stops);
  document()->setDefaultTextOption(option);
}

void ListBox::ShowText(const QString& text) {
  const int top = verticalScrollBar()->value();
  QString shown = text;
  // Three blanks go before the second field and two before the third, so five stand before a third without a
  // second.
  if (aligned_) {
    shown.replace(QStringLiteral("     "), QStringLiteral("\t\t"));
    shown.replace(QStringLiteral("   "), QStringLiteral("\t"));
    shown.replace(QStringLiteral("  "), QStringLiteral("\t"));
  }
  setPlainText(shown);
  verticalScrollBar()->setValue(top);
  PaintMark();
}

void ListBox::MarkLine(int line) {
  marked_line_ = line;
  PaintMark();
  const QTextBlock block = document()->findBlockByNumber(line);
  if (line < 0 || !block.isValid()) return;
  setTextCursor(QTextCursor(block));
  ensureCursorVisible();
}

void ListBox::PaintMark() {
  const QTextBlock block = document()->findBlockByNumber(marked_line_);
  if (marked_line_ < 0 || !block.isValid()) {
    setExtraSelections({});
    return;
  }
  QTextEdit::ExtraSelection mark;
  mark.cursor = QTextCursor(block);
  mark.format.setBackground(palette().highlight());
  mark.format.setForeground(palette().highlightedText());
  mark.format.setProperty(QTextFormat::FullWidthSelection, true);
  setExtraSelections({mark});
}

QSize ListBox::sizeHint() const {
  const QMargins border = contentsMargins();
  const int margin = static_cast<int>(document()->documentMargin()) * 2 + frameWidth() * 2;
  return {fontMetrics().averageCharWidth() * columns_ + margin + verticalScrollBar()->sizeHint().width() +
              border.left() + border.right(),
          fontMetrics().lineSpacing() * lines_ + margin};
}

QSize ListBox::minimumSizeHint() const {
  return {sizeHint().width(), fontMetrics().lineSpacing() * 6};
}

}  // namespace kestrum
