#pragma once

#include <QString>
#include <QStringList>
#include <cstdio>

#include "cli/command_line.h"

namespace orvandi {

// --export and --summary: reads the logs, writes to the file or to standard output, tells what was left out
// on standard error. The exit code: 0, or 1 when a log could not be read or nothing could be written.
int RunTextCommand(const CommandLine& line, const QStringList& logs);

// In the encoding of the terminal.
void Print(std::FILE* stream, const QString& text);

}  // namespace orvandi
