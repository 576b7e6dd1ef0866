#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/file_store.h"
#include "platform/worker.h"

// What keeps records through a power cut, a kill and a full disk. While records wait for their block they
// stand in a journal beside the log file, "<log file>.pending": the head of the block, then the records, each
// synced as it comes. Before a block is appended, its journal gets one line more with the old size of the log
// and the final header ("=> SIZE HEADER"): with it an append that was cut short is completed, not repeated,
// however often that is tried. When the block stands in the log, the journal goes.
namespace kestrum {

// Full path of the journal of a log file.
std::string JournalPath(const std::string& log_path);

// A block on its way to the disk.
struct Block {
  std::string header;
  std::string records;  // each with CR LF
};

// Appends a block with its head. A log file that does not end in a line end gets one first. Both its journal
// and the one that the records came from (empty for the same) go when it is written; a journal that cannot be
// written is no fault of the block.
Outcome WriteBlock(FileStore& files, const std::string& log_path, const std::string& other_journal,
                   const Block& block);

struct Recovery {
  std::size_t records = 0;     // appended to the log, or completed there
  std::optional<Fault> fault;  // of a journal, which then stays for the next time
};
// Appends what left journals of a log file hold to it, each as a block without a torn last line, and removes
// them.
Recovery RecoverJournal(FileStore& files, const std::string& log_path);

// The journal and the blocks of one program, written by the worker in their order.
class Journal {
 public:
  // `pointer_path` names a small file that tells where journals lie that are not those of `usual_log_path`,
  // so that the next start finds them.
  Journal(FileStore& files, Worker& worker, std::string pointer_path, std::string usual_log_path);

  // Set by its owner: a journal that was left, and could not be reached before, has been recovered.
  std::function<void(const Recovery&)> recovered_late;

  // Whether a journal is begun and its block not yet written.
  bool IsOpen() const { return !log_path_.empty(); }
  // The head goes to the disk with the first record. A left journal of this name is recovered first, or kept
  // under another name.
  void Begin(const std::string& log_path, const std::string& header);
  // Writes one record. Records that come while the disk is busy go together in the next write, and after a
  // fault all of the block once more.
  void Add(const std::string& record);
  // Writes a block and ends its journal; `written` is told how it went, as a window event. Too many blocks
  // that wait for a disk are a fault.
  void Write(const std::string& log_path, Block block, std::function<void(const Outcome&)> written);
  // Recovers the journals of the usual log file, of this one and of those that the pointer names.
  void Recover(const std::string& log_path, std::function<void(const Recovery&)> recovered);

  // Why the last record could not be written; nothing when all is well.
  const std::optional<Fault>& fault() const { return fault_; }
  // Waits until everything is written; false when the disk does not answer.
  bool Finish();

 private:
  void Send();
  void Close();

  FileStore& files_;
  Worker& worker_;
  std::string pointer_path_;
  std::string usual_log_path_;
  std::string log_path_;     // of the present journal; empty when there is none
  std::string text_;         // all of the present journal
  std::size_t sent_ = 0;     // how much of it has been handed to the worker
  bool first_ = false;       // nothing of it has been handed over yet
  bool whole_ = false;       // the next write replaces the file
  bool busy_ = false;        // a write is on its way
  unsigned generation_ = 0;  // rises with every journal
  // Known to the worker alone: what stands at the journal's place is of the present block.
  std::shared_ptr<bool> ours_ = std::make_shared<bool>(false);
  std::size_t blocks_waiting_ = 0;
  std::optional<Fault> fault_;
};

}  // namespace kestrum
