#pragma once

#include <QString>

class QWidget;

namespace kestrum {

// A text as a box can show it on its screen: a word that is wider than most of the screen, as a long path may
// be, may be broken, and what is left out of a text without end stands as "…" in its middle. Any other text
// stays as it is.
QString BoxText(const QString& text, const QWidget& box);

// Width in pixels that the title bar of a box needs for its title, at most that of the box's screen.
int TitleWidth(const QWidget& box, const QString& title);

// At most `most_characters`; what is too long ends in "…".
QString Shortened(const QString& text, int most_characters);

}  // namespace kestrum
