#pragma once

#include <QString>

class QWidget;

namespace kestrum {

// A text as a box can show it on any screen: lines are broken, words that are longer than a line too, and
// what is left out of a text without end stands as "…" in its middle. An ordinary text stays as it is.
QString BoxText(const QString& text);

// Width in pixels that the title bar of a box needs for its title, at most that of the box's screen.
int TitleWidth(const QWidget& box, const QString& title);

// At most `most_characters`; what is too long ends in "…".
QString Shortened(const QString& text, int most_characters);

}  // namespace kestrum
