#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/ports.h"

// The outside world as the tests play it. Everything is recorded; answers are scripted; nothing waits.
namespace kestrum::test {

class ManualClock : public Clock {
 public:
  DateTime now{2026, 5, 17, 14, 3, 9};
  std::chrono::milliseconds elapsed{0};
  std::vector<int> sleeps_ms;

  DateTime Now() const override { return now; }
  std::chrono::milliseconds Elapsed() const override { return elapsed; }
  void Sleep(std::chrono::milliseconds duration) override {
    sleeps_ms.push_back(static_cast<int>(duration.count()));
    Advance(duration);
  }
  // Moves both the elapsed time and the time of day on (over midnight and the end of months too).
  void Advance(std::chrono::milliseconds duration);
};

class ScriptedSerial : public SerialPort {
 public:
  bool can_open = true;
  int port = 0;
  std::string settings;
  std::optional<Fault> trouble;
  std::vector<std::string> written;  // one entry a write, only while open
  std::vector<std::string> events;   // "port 1", "settings  9600,N,8,2", "open", "close", in order
  // What the rig has sent by the next read; used before `answer`.
  std::deque<std::string> replies;
  // Else the reply to the last write; by default nothing.
  std::function<std::string(const std::string& command)> answer;

  void SetPort(int number) override;
  void SetSettings(const std::string& text) override;
  bool Open() override;
  void Close() override;
  bool IsOpen() const override { return open_; }
  void Write(std::string_view bytes) override;
  std::string ReadAll() override;
  std::string DeviceName(int number) const override { return "/dev/scripted" + std::to_string(number); }
  std::optional<Fault> Trouble() const override { return trouble; }

  // The adapter is pulled out, and put in again.
  void Vanish() {
    open_ = false;
    lost_ = true;
    can_open = false;
    trouble = Fault{"/dev/scripted", "/dev/scripted was lost"};
  }
  void Return() {
    can_open = true;
    trouble.reset();
  }
  bool WaitsForDevice() const override { return lost_ && !open_; }
  bool DeviceIsBack() const override { return WaitsForDevice() && can_open; }
  std::string LastWritten() const { return written.empty() ? std::string() : written.back(); }

 private:
  bool open_ = false;
  bool lost_ = false;
};

class ScriptedLinks : public TextLinks {
 public:
  std::vector<std::string> events;  // "link Posdex|form1 lblLat1", "unlink ..."

  void LinkAutomatic(const std::string& topic, const std::string& item,
                     std::function<void(const std::string&)> on_text) override;
  void Unlink(const std::string& topic, const std::string& item) override;
  bool server_present = true;
  bool ServerPresent(const std::string&) const override { return server_present; }
  std::chrono::milliseconds silence{0};  // of a server that is there
  std::optional<std::chrono::milliseconds> SilentFor(const std::string&) const override {
    return server_present ? std::optional(silence) : std::nullopt;
  }
  // The reader sends a text; false when the item is not linked.
  bool Send(const std::string& item, const std::string& text);

 private:
  std::map<std::string, std::function<void(const std::string&)>> handlers_;
};

struct ShownBox {
  std::string title;
  std::string text;
  Icon icon = Icon::kNone;
};

// Answers are taken from the queues; an empty queue answers No or cancels.
class ScriptedDialogs : public Dialogs {
 public:
  std::vector<ShownBox> messages;
  std::vector<ShownBox> questions;
  struct Input {
    std::string title;
    std::string prompt;
    std::string proposal;
  };
  std::vector<Input> inputs;
  std::deque<bool> yes_no;
  std::deque<std::string> answers;
  std::function<void()> while_open;  // what happens under an open box
  bool dismissed = false;            // from then on nothing is shown or asked

  void Show(const std::string& title, const std::string& text, Icon icon) override;
  bool AskYesNo(const std::string& title, const std::string& text, Icon icon) override;
  std::string AskText(const std::string& title, const std::string& prompt,
                      const std::string& proposal) override;
  // Recorded among the messages; nothing happens under it, since nobody waits for it.
  void Notify(const std::string& title, const std::string& text, Icon icon) override;
  int notices = 0;  // how many of the messages were notices
  void Dismiss() override { dismissed = true; }
};

class ScriptedPump : public EventPump {
 public:
  int pumps = 0;
  std::vector<int> waits_ms;
  std::function<void()> on_pump;  // also called by PumpFor, after the clock has moved on

  explicit ScriptedPump(ManualClock& clock) : clock_(clock) {}
  void Pump() override;
  void PumpFor(std::chrono::milliseconds longest) override;

 private:
  ManualClock& clock_;
};

class CountingBeeper : public Beeper {
 public:
  int beeps = 0;
  std::function<void()> on_beep;
  void Beep() override {
    ++beeps;
    if (on_beep) on_beep();
  }
};

class ScriptedProgram : public Program {
 public:
  std::string folder = "/car";
  bool another_instance = false;
  std::set<std::string> companions;  // names that can be started, e.g. "\\Posdex.exe"
  std::vector<std::pair<std::string, ShowStyle>> started;

  std::string Folder() const override { return folder; }
  std::string ExeName() const override { return "Kestrum"; }
  bool AnotherInstanceRuns() override { return another_instance; }
  std::string PathOf(const std::string& name) const override;
  std::string CompanionPath(const std::string& name) const override { return PathOf(name); }
  bool StartCompanion(const std::string& name, ShowStyle style) override;
  std::vector<std::string> losses;
  void ReportLoss(const std::string& text) override { losses.push_back(text); }
  void End() override { ended_ = true; }
  bool Ended() const override { return ended_; }

 private:
  bool ended_ = false;
};

class ScriptedWindows : public WindowLookup {
 public:
  std::set<std::string> titles;
  std::vector<std::string> looked_up;
  std::vector<std::string> closed;

  bool Exists(const std::string& title) override;
  std::function<void()> on_close;  // before a window is closed
  void Close(const std::string& title) override {
    if (on_close) on_close();
    closed.push_back(title);
  }
};

class MemoryFiles : public FileStore {
 public:
  std::map<std::string, std::string> files;
  std::string read_fault;   // when not empty, the operation fails with this description
  std::string write_fault;  // Replace, Append and Rename
  std::string faulty_path;  // when not empty, only writing to this path fails
  std::function<void(const std::string& path)> on_append;  // just before the bytes
  bool forget_appends = false;                             // count them only, for drives that last for days
  std::function<void(const std::string& path)> on_write;   // before Replace and Append
  int replaces = 0;
  int appends = 0;  // but for those to a journal
  std::size_t appended_lines = 0;

  bool Exists(const std::string& path) const override { return files.contains(path); }
  std::optional<std::uint64_t> Size(const std::string& path) const override;
  Result<std::string> Read(const std::string& path, std::uint64_t most_bytes) const override;
  Result<std::string> ReadFrom(const std::string& path, std::uint64_t offset,
                               std::uint64_t most_bytes) const override;
  Outcome Replace(const std::string& path, std::string_view bytes) override;
  Outcome Append(const std::string& path, std::string_view bytes) override;
  Outcome CheckAppend(const std::string& path) const override { return TryWrite(path); }
  Outcome Remove(const std::string& path) override;
  Outcome Rename(const std::string& from, const std::string& to) override;

 private:
  Outcome TryWrite(const std::string& path) const;
};

// Writes at once, unless told to hold: then jobs wait for Release or Finish.
class ScriptedWorker : public Worker {
 public:
  bool hold = false;   // a slow disk
  bool hangs = false;  // Finish gives up
  std::size_t jobs = 0;

  void Post(std::function<void()> job, std::function<void()> done) override;
  bool Finish(std::chrono::milliseconds longest) override;
  void Release();

 private:
  std::deque<std::pair<std::function<void()>, std::function<void()>>> waiting_;
};

struct ScriptedPorts {
  ScriptedSerial serial;
  ScriptedLinks links;
  ScriptedDialogs dialogs;
  ManualClock clock;
  ScriptedPump pump{clock};
  CountingBeeper beeper;
  ScriptedProgram program;
  ScriptedWindows windows;
  MemoryFiles files;
  ScriptedWorker worker;

  Ports ports() { return {serial, links, dialogs, clock, pump, beeper, program, windows, files, worker}; }
};

// Five bytes as a text, e.g. Bytes({0, 0, 0, 0, 0xE7}).
std::string Bytes(const std::vector<int>& values);

}  // namespace kestrum::test
