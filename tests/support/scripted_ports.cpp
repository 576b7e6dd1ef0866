#include "support/scripted_ports.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace kestrum::test {

void ManualClock::Advance(std::chrono::milliseconds duration) {
  using namespace std::chrono;
  const seconds before = duration_cast<seconds>(elapsed);
  elapsed += duration;
  const seconds passed = duration_cast<seconds>(elapsed) - before;
  if (passed.count() == 0) return;
  const auto date = sys_days(year(now.year) / month(static_cast<unsigned>(now.month)) /
                             day(static_cast<unsigned>(now.day)));
  const auto moment = date + hours(now.hour) + minutes(now.minute) + seconds(now.second) + passed;
  const auto midnight = floor<days>(moment);
  const year_month_day new_date(midnight);
  const hh_mm_ss time(moment - midnight);
  now = {static_cast<int>(new_date.year()),
         static_cast<int>(static_cast<unsigned>(new_date.month())),
         static_cast<int>(static_cast<unsigned>(new_date.day())),
         static_cast<int>(time.hours().count()),
         static_cast<int>(time.minutes().count()),
         static_cast<int>(time.seconds().count())};
}

void ScriptedSerial::SetPort(int number) {
  port = number;
  events.push_back("port " + std::to_string(number));
}

void ScriptedSerial::SetSettings(const std::string& text) {
  settings = text;
  events.push_back("settings " + text);
}

bool ScriptedSerial::Open() {
  events.emplace_back("open");
  open_ = can_open && port != 0;
  return open_;
}

void ScriptedSerial::Close() {
  events.emplace_back("close");
  open_ = false;
}

void ScriptedSerial::Write(std::string_view bytes) {
  if (open_) written.emplace_back(bytes);
}

std::string ScriptedSerial::ReadAll() {
  if (!open_) return {};
  if (!replies.empty()) {
    std::string reply = std::move(replies.front());
    replies.pop_front();
    return reply;
  }
  return answer ? answer(LastWritten()) : std::string();
}

void ScriptedLinks::LinkAutomatic(const std::string& topic, const std::string& item,
                                  std::function<void(const std::string&)> on_text) {
  events.push_back("link " + topic + " " + item);
  handlers_[item] = std::move(on_text);
}

void ScriptedLinks::Unlink(const std::string& topic, const std::string& item) {
  events.push_back("unlink " + topic + " " + item);
  handlers_.erase(item);
}

bool ScriptedLinks::Send(const std::string& item, const std::string& text) {
  const auto handler = handlers_.find(item);
  if (handler == handlers_.end()) return false;
  handler->second(text);
  return true;
}

void ScriptedDialogs::Show(const std::string& title, const std::string& text, Icon icon) {
  if (dismissed) return;
  messages.push_back({title, text, icon});
  if (while_open) while_open();
}

void ScriptedDialogs::Notify(const std::string& title, const std::string& text, Icon icon) {
  if (dismissed) return;
  ++notices;
  messages.push_back({title, text, icon});
}

bool ScriptedDialogs::AskYesNo(const std::string& title, const std::string& text, Icon icon) {
  if (dismissed) return false;
  questions.push_back({title, text, icon});
  if (while_open) while_open();
  if (yes_no.empty() || dismissed) return false;
  const bool answer = yes_no.front();
  yes_no.pop_front();
  return answer;
}

std::string ScriptedDialogs::AskText(const std::string& title, const std::string& prompt,
                                     const std::string& proposal) {
  if (dismissed) return {};
  inputs.push_back({title, prompt, proposal});
  if (while_open) while_open();
  if (answers.empty() || dismissed) return {};
  std::string answer = std::move(answers.front());
  answers.pop_front();
  return answer;
}

void ScriptedPump::Pump() {
  ++pumps;
  if (on_pump) on_pump();
}

void ScriptedPump::PumpFor(std::chrono::milliseconds longest) {
  waits_ms.push_back(static_cast<int>(longest.count()));
  clock_.Advance(longest);
  if (on_pump) on_pump();
}

bool ScriptedProgram::StartCompanion(const std::string& name, ShowStyle style) {
  started.emplace_back(name, style);
  return companions.contains(name);
}

bool ScriptedWindows::Exists(const std::string& title) {
  looked_up.push_back(title);
  return titles.contains(title);
}

std::string ScriptedProgram::PathOf(const std::string& name) const {
  if (name.empty() || name.front() == '/') return name;
  return folder + "/" + (name.front() == '\\' ? name.substr(1) : name);
}

std::optional<std::uint64_t> MemoryFiles::Size(const std::string& path) const {
  const auto file = files.find(path);
  if (file == files.end()) return {};
  return file->second.size();
}

Result<std::string> MemoryFiles::Read(const std::string& path, std::uint64_t most_bytes) const {
  if (Size(path).value_or(0) > most_bytes) return Fault{path, "File too large"};
  return ReadFrom(path, 0, std::numeric_limits<std::uint64_t>::max());
}

Result<std::string> MemoryFiles::ReadFrom(const std::string& path, std::uint64_t offset,
                                          std::uint64_t most_bytes) const {
  if (!read_fault.empty()) return Fault{path, read_fault};
  const auto file = files.find(path);
  if (file == files.end()) return Fault{path, "No such file or directory"};
  const std::string& content = file->second;
  return offset < content.size() ? content.substr(offset, most_bytes) : std::string();
}

Outcome MemoryFiles::TryWrite(const std::string& path) const {
  const bool fails = !write_fault.empty() && (faulty_path.empty() || faulty_path == path);
  if (fails) return Fault{path, write_fault};
  return Done{};
}

Outcome MemoryFiles::Replace(const std::string& path, std::string_view bytes) {
  if (on_write) on_write(path);
  if (!path.ends_with(".pending")) ++replaces;
  if (Outcome tried = TryWrite(path); !tried) return tried;
  files[path] = bytes;
  return Done{};
}

Outcome MemoryFiles::Append(const std::string& path, std::string_view bytes) {
  if (on_write) on_write(path);
  if (on_append) on_append(path);
  const bool journal = path.ends_with(".pending");
  if (!journal) ++appends;
  if (Outcome tried = TryWrite(path); !tried) return tried;
  if (!journal) appended_lines += static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n'));
  if (!forget_appends) files[path] += bytes;
  return Done{};
}

Outcome MemoryFiles::Remove(const std::string& path) {
  files.erase(path);
  return Done{};
}

Outcome MemoryFiles::Rename(const std::string& from, const std::string& to) {
  if (Outcome tried = TryWrite(to); !tried) return tried;
  const auto file = files.find(from);
  if (file == files.end()) return Fault{from, "No such file or directory"};
  files[to] = std::move(file->second);
  files.erase(from);
  return Done{};
}

void ScriptedWorker::Post(std::function<void()> job, std::function<void()> done) {
  ++jobs;
  waiting_.emplace_back(std::move(job), std::move(done));
  if (!hold) Release();
}

bool ScriptedWorker::Finish(std::chrono::milliseconds /*longest*/) {
  if (hangs) return waiting_.empty();
  Release();
  return true;
}

void ScriptedWorker::Release() {
  while (!waiting_.empty()) {
    const auto [job, done] = std::move(waiting_.front());
    waiting_.pop_front();
    if (job) job();
    if (done) done();
  }
}

std::string Bytes(const std::vector<int>& values) {
  std::string text;
  std::transform(values.begin(), values.end(), std::back_inserter(text),
                 [](int value) { return static_cast<char>(value); });
  return text;
}

}  // namespace kestrum::test
