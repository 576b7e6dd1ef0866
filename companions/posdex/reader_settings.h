#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

#include "common/fault.h"

namespace kestrum::posdex {

// Where the positions come from.
struct SourceChoice {
  enum class Kind { kGpsd, kSerial, kFile, kAuto };
  Kind kind = Kind::kGpsd;
  QString host = QStringLiteral("localhost");  // gpsd
  quint16 port = 2947;                         // gpsd
  QString path;                                // serial device or recorded file, as written
  int baud = 4800;                             // serial
  bool loop = false;                           // file: start again at its end

  bool operator==(const SourceChoice&) const = default;
};

// Reads "auto", "gpsd[:HOST[:PORT]]" (an IPv6 host in brackets), "serial:DEVICE[@BAUD]" or
// "file:PATH[?loop]".
Result<SourceChoice> ParseSource(const QString& text);

struct ReaderSettings {
  SourceChoice source;
  std::optional<Fault> complaint;  // about what could not be read
};

// Reads the bytes of posdex.conf: lines "source=...", comments from "#" or ";", blank lines. The last good
// line wins; anything else is skipped and named in the complaint. Never fails: what is left is the default.
ReaderSettings ParseConf(const QByteArray& bytes);

// Reads the file as ParseConf. A missing file is no complaint; at most 64 KiB are read.
ReaderSettings LoadConf(const QString& path);

struct CommandLine {
  bool help = false;
  bool version = false;
  bool minimised = false;
  std::optional<SourceChoice> source;
  std::optional<Fault> complaint;  // set when the arguments make no sense
};

// Reads the arguments after the program's name.
CommandLine ParseCommandLine(const QStringList& arguments);

// The text of --help.
QString HelpText();

}  // namespace kestrum::posdex
