#include "desktop/ports/box_text.h"

#include <QFontMetrics>
#include <QScreen>
#include <QStringList>
#include <QWidget>

namespace kestrum {
namespace {

constexpr qsizetype kMostCharacters = 1600;  // 20 lines of 80
constexpr qsizetype kMostLines = 24;
constexpr QChar kEllipsis(0x2026);

// A path may be one long word.
QString WithBreaks(const QString& line, const QFontMetrics& metrics, int widest_word) {
  constexpr QChar kMayBreakHere(0x200B);  // takes no room
  QString result;
  int word = 0;
  for (const QChar character : line) {
    const int width = metrics.horizontalAdvance(character);
    word = character.isSpace() ? 0 : word + width;
    if (word > widest_word) {
      result.append(kMayBreakHere);
      word = width;
    }
    result.append(character);
  }
  return result;
}

}  // namespace

QString BoxText(const QString& text, const QWidget& box) {
  QString shown = text;
  if (shown.size() > kMostCharacters) {
    shown = text.first(kMostCharacters / 2) + kEllipsis + text.last(kMostCharacters / 2);
  }
  QStringList lines = shown.split(QLatin1Char('\n'));
  if (lines.size() > kMostLines) {
    lines = lines.first(kMostLines / 2) + QStringList(QString(kEllipsis)) + lines.last(kMostLines / 2);
  }
  const int widest_word = box.screen()->availableGeometry().width() * 3 / 4;
  for (QString& line : lines) line = WithBreaks(line, box.fontMetrics(), widest_word);
  return lines.join(QLatin1Char('\n'));
}

int TitleWidth(const QWidget& box, const QString& title) {
  // The title bar's font and its buttons belong to the desktop: bold, and room for some buttons.
  QFont font = box.font();
  font.setBold(true);
  const QFontMetrics metrics(font);
  const int wanted = metrics.horizontalAdvance(title) + metrics.averageCharWidth() * 16;
  return qMin(wanted, box.screen()->availableGeometry().width() * 9 / 10);
}

QString Shortened(const QString& text, int most_characters) {
  return text.size() <= most_characters ? text : text.first(most_characters - 1) + kEllipsis;
}

}  // namespace kestrum
