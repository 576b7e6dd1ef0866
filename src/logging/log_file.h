#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "config/settings.h"
#include "forms/forms.h"
#include "logging/journal.h"
#include "logging/log_record.h"
#include "platform/ports.h"
#include "ui/lamps.h"
#include "ui/minimal_display.h"

namespace kestrum {

// Records collect in a buffer of 100 and are appended to the log file in blocks, each headed by date, TX site
// and rig.
class LogFile {
 public:
  LogFile(State& state, Forms& forms, const PortSet<Dialogs, Clock, Program, FileStore, Worker>& ports,
          MinimalDisplay& minimal);

  std::array<std::string, 101> LogBuffer;  // 0 holds the start stamp and is never written
  int LogCount = 0;                        // index of the last record, 0 when empty
  bool NotLogging = true;

  // "Start @" and date and time, kept at index 0 and shown in lblLog.
  void StampStart();
  // Stores and shows one record; a full buffer is flushed.
  void AddLogRecord(const DateTime& now, const Site& site, const Reading& reading);
  // Hands the buffer to the disk as one block when logging is on, then empties it either way. An empty name
  // stands for the default file. A fault is reported once and the records are lost.
  void FlushLog(const std::string& file_name);
  // FlushLog to LogFileName when there are records.
  void FlushPending();
  // The same before something changes that the header tells: with the frequency sent last and the antenna
  // taken over last, whatever the boxes hold already.
  void EndBlock();
  // The text of the antenna box counts from now on.
  void AntennaTaken();
  // A journal that the last drive has left becomes a block of its log.
  void RecoverLastDrive();
  // The flush at the end of the program: waits until everything is on the disk. What is lost now is told in a
  // box while one can be seen, and by the end of the process.
  void FlushAtEnd();
  // Waits until what has been handed over is on the disk, and tells when that does not come to an end.
  void FinishWriting();
  // Date and time, TX site, rig, mode and frequency, antenna.
  std::string LogHeader() const;
  // off: "Not logging now !", else "Data to " and the file name; the text is selected for copying.
  void ShowLoggingState(bool off);

  // How the log is doing.
  LogFacts Facts() const;
  // Full path of the log file.
  std::string Path() const;
  // Looks, beside the window thread, whether the log could be appended to now; Facts then tells.
  void CheckFolder();
  // Set by the application: Facts may tell something new.
  Handler health_changed;

  // Menu: asks for a new log file and flushes into it; nothing with an empty buffer.
  void mnuSaveLogfile_Click();

 private:
  void EmptyBuffer();
  void ShowCount();
  BlockHeading Heading() const;
  // With the frequency sent last and the antenna taken over last, whatever the boxes hold already.
  BlockHeading HeadingInForce() const;
  void Flush(const std::string& file_name, const BlockHeading& heading);
  void Written(std::size_t records, const Outcome& outcome);
  void WriteRecords(const std::string& path, const std::string& header,
                    const std::vector<std::string>& records);
  std::vector<std::string> Records() const;
  void AddToJournal(const std::string& record);
  void ReportFault(const std::string& reason, const std::string& file_name);

  State& state_;
  Forms& forms_;
  PortSet<Dialogs, Clock, Program, FileStore, Worker> ports_;
  MinimalDisplay& minimal_;
  Journal journal_;
  std::string antenna_;                           // taken over last
  std::optional<std::vector<std::string>> kept_;  // what fills the buffer while a file is named for it
  bool finishing_ = false;
  std::uint64_t written_ = 0;  // records
  std::optional<DateTime> last_written_;
  std::uint64_t lost_ = 0;  // records, since a block was written last
  std::optional<DateTime> lost_at_;
  std::optional<Fault> folder_fault_;
};

}  // namespace kestrum
