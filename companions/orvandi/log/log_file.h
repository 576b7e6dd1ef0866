#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "log/cleaning.h"
#include "log/log.h"
#include "log/log_reader.h"

namespace orvandi {

// Called about every megabyte with the bytes read and those that there are; false cancels.
using Progress = std::function<bool(std::uint64_t done, std::uint64_t total)>;

// A log on the disk that may grow while it is read, with the journal "<log>.pending" beside it. It reads what
// came since the last look, never from the start again, unless the file became shorter or another one took
// its place. Not for two threads at once; a file may be opened in one and followed in another.
class LogFile {
 public:
  struct Outcome {
    bool ok = false;
    bool cancelled = false;
    std::string
        sentence;  // UTF-8, for the user: why it is not ok, or what is odd about it ("" when nothing is)
  };
  struct Change {
    bool changed = false;
    bool reread = false;            // everything is new: the file was shorter or another one
    std::size_t first_changed = 0;  // records before this one are as they were
    std::string sentence;           // as in Outcome
  };

  explicit LogFile(std::string path, const CleaningRules& rules = {}, const ReaderLimits& limits = {});
  ~LogFile();
  LogFile(LogFile&&) noexcept;
  LogFile& operator=(LogFile&&) noexcept;

  // Reads all of it. Not ok when the file cannot be opened, is a folder, or holds lines of which none is a
  // header or a record; a file that is empty or holds a header alone is ok (a drive may begin there), and the
  // sentence says so. Update may be called after any outcome: a log that is not there yet is read when it
  // comes.
  Outcome Open(const Progress& progress = {});
  // Reads what came since; cheap when nothing did. Call it about twice a second.
  Change Update();

  const std::string& Path() const { return path_; }  // as given, in the encoding of the file system
  const Log& Content() const;

  // The record's line as it stands in its file, UTF-8; "" when it is not there any more.
  std::string LineOf(const Record& record) const;

 private:
  struct State;

  std::string path_;
  std::unique_ptr<State> state_;
};

}  // namespace orvandi
