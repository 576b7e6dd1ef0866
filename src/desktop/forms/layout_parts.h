#pragma once

#include <QBoxLayout>
#include <QLabel>
#include <QString>

namespace kestrum {

// A small, quiet heading over or beside a value.
QLabel* MakeHeading(const QString& text, QWidget* parent);
// A heading with its value below, as one column.
QVBoxLayout* Headed(const QString& heading, QWidget* value);
// A font of the application at a multiple of its size.
QFont ScaledFont(const QWidget* widget, double scale);
// Width of `characters` average characters.
int Characters(const QWidget* widget, int characters);

// Sizes of text against the application's font: what is read while driving, and what is read at a stop.
inline constexpr double kReadoutScale = 2.8;
inline constexpr double kLargestReadoutScale = 4.2;
inline constexpr double kSecondScale = 1.7;
inline constexpr double kHeadingScale = 0.85;

}  // namespace kestrum
