#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "export/exporter.h"

namespace orvandi {

// What the user typed behind the program's name.
struct CommandLine {
  bool help = false;
  bool version = false;
  bool summary = false;
  bool all = false;  // marked records, too
  bool minimised = false;
  std::optional<Format> format;  // --export
  QString output;                // --output; empty or "-": standard output
  QString calibration;           // --calibration; empty: none
  QStringList files;
  QString complaint;  // what is wrong with the command line; "" when nothing is

  // Whether no window is wanted.
  bool TextOnly() const { return summary || format.has_value(); }
};

// Of the arguments without the program's name and without those that the toolkit takes for itself.
CommandLine ParseCommandLine(const QStringList& arguments);

QString HelpText();

}  // namespace orvandi
