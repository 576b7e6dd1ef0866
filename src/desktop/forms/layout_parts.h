#pragma once

#include <QBoxLayout>
#include <QLabel>
#include <QString>

namespace kestrum {

// The rows of a panel, and the widgets of one row; both close together, in the measure of the font.
QVBoxLayout* PanelRows(QWidget* panel);
QHBoxLayout* Line();
// A small, quiet heading over or beside a value.
QLabel* MakeHeading(const QString& text, QWidget* parent);
// A heading with its value below, as one column.
QVBoxLayout* Headed(const QString& heading, QWidget* value);
// A font of the application at a multiple of its size.
QFont ScaledFont(const QWidget* widget, double scale);
// Width of `characters` average characters.
int Characters(const QWidget* widget, int characters);

// Sizes of text against the application's font: what is read while driving, and what is read at a stop.
inline constexpr double kReadoutScale = 1.8;
inline constexpr double kSecondScale = 1.4;
inline constexpr double kHeadingScale = 0.85;

// The longest texts, in characters: what a value, a panel of the status bar ask place for, and what can be
// typed.
inline constexpr int kMostOfNumber = 72;  // the longest frequency of a configuration, with its unit
inline constexpr int kMostOfAntenna = 4096;
inline constexpr int kMostOfPath = 4096;

}  // namespace kestrum
