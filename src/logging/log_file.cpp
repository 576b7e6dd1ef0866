#include "logging/log_file.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

#include "cat/rig_text.h"
#include "config/app_title.h"
#include "config/hint_line.h"
#include "text/number_text.h"
#include "text/text.h"
#include "text/text_file.h"

namespace kestrum {
namespace {

constexpr const char* kDefaultFile = "\\RSSI-GPS.log";

std::string FaultText(const std::string& reason, const std::string& path) {
  return "Error saving data \r\n" + reason + "\r\n" + path;
}

std::string WithKhz(const std::string& frequency) {
  return ContainsText(frequency, " kHz") ? frequency : frequency + " kHz";
}

}  // namespace

LogFile::LogFile(State& state, Forms& forms, const PortSet<Dialogs, Clock, Program, FileStore, Worker>& ports,
                 MinimalDisplay& minimal)
    : state_(state),
      forms_(forms),
      ports_(ports),
      minimal_(minimal),
      journal_(ports.files, ports.worker, ports.program.PathOf("\\Kestrum.pending"),
               ports.program.PathOf(kDefaultFile)) {
  journal_.recovered_late = [this](const Recovery& recovery) {
    state_.recovered_records += static_cast<int>(recovery.records);
    ShowHint(state_, forms_.form1);
  };
}

void LogFile::StampStart() {
  LogBuffer[0] = "Start @" + StartStampText(ports_.clock.Now());
  forms_.form1.lblLog.caption = LogBuffer[0];
}

void LogFile::AddLogRecord(const DateTime& now, const Site& site, const Reading& reading) {
  ++LogCount;
  auto& record = LogBuffer.at(static_cast<std::size_t>(LogCount));
  record = LogRecord(now, site, reading);
  forms_.form1.lblLog.caption = record;
  ShowCount();
  if (!NotLogging) AddToJournal(record);
  Run(health_changed);
  if (forms_.form1.mnuMinimalDisplay.checked) {
    minimal_.ShowRecord(site, reading.raw, SignalText(reading.converted));
  }
  if (LogCount >= kRecordsPerBlock) FlushLog(state_.settings.LogFileName);
}

void LogFile::FlushLog(const std::string& file_name) {
  Flush(file_name, Heading());
}

void LogFile::FlushPending() {
  if (LogCount > 0) FlushLog(state_.settings.LogFileName);
}

BlockHeading LogFile::HeadingInForce() const {
  BlockHeading heading = Heading();
  const Settings& settings = state_.settings;
  heading.rig_text = RigModeText(settings.RigModel, settings.RigMode, WithKhz(forms_.form1.lblFreq.caption));
  heading.antenna = antenna_;
  return heading;
}

void LogFile::EndBlock() {
  if (LogCount > 0) Flush(state_.settings.LogFileName, HeadingInForce());
}

void LogFile::AntennaTaken() {
  const std::string& present = forms_.form1.cmbTxAntenna.text;
  if (present == antenna_) return;
  EndBlock();
  antenna_ = present;
}

void LogFile::Flush(const std::string& file_name, const BlockHeading& heading) {
  if (NotLogging) {
    if (kept_) {
      const auto records = Records();
      kept_->insert(kept_->end(), records.begin(), records.end());
    }
    EmptyBuffer();
    return;
  }
  std::string path = file_name;
  if (path.empty()) {
    path = ports_.program.PathOf(kDefaultFile);
    state_.settings.LogFileName = path;
    ShowLoggingState(false);
  }
  const std::string header = BlockHeader(ports_.clock.Now(), heading);
  forms_.form1.lblLog.tool_tip = header;
  const auto records = Records();
  EmptyBuffer();
  WriteRecords(path, header, records);
}

void LogFile::WriteRecords(const std::string& path, const std::string& header,
                           const std::vector<std::string>& records) {
  journal_.Write(ports_.program.PathOf(path), {header, JoinLines(records)},
                 [this, path, count = records.size()](const Outcome& outcome) {
                   Written(count, outcome);
                   if (!outcome) ReportFault(outcome.fault().reason, path);
                 });
}

void LogFile::Written(std::size_t records, const Outcome& outcome) {
  folder_fault_.reset();
  if (!outcome) {
    folder_fault_ = outcome.fault();
    lost_ += records;
    lost_at_ = ports_.clock.Now();
  } else {
    written_ += records;
    last_written_ = ports_.clock.Now();
    lost_ = 0;
    lost_at_.reset();
  }
  Run(health_changed);
}

LogFacts LogFile::Facts() const {
  LogFacts facts;
  facts.logging = !NotLogging;
  facts.in_buffer = LogCount;
  facts.written = written_;
  facts.last_written = last_written_;
  facts.lost = lost_;
  facts.lost_at = lost_at_;
  facts.journal_fault = journal_.fault();
  facts.folder_fault = folder_fault_;
  return facts;
}

void LogFile::CheckFolder() {
  auto outcome = std::make_shared<Outcome>(Done{});
  ports_.worker.Post([&files = ports_.files, path = Path(), outcome] { *outcome = files.CheckAppend(path); },
                     [this, outcome] {
                       folder_fault_.reset();
                       if (!*outcome) folder_fault_ = outcome->fault();
                       Run(health_changed);
                     });
}

std::vector<std::string> LogFile::Records() const {
  std::vector<std::string> records;
  std::copy_if(LogBuffer.begin() + 1, LogBuffer.end(), std::back_inserter(records),
               [](const std::string& record) { return !record.empty(); });
  return records;
}

std::string LogFile::Path() const {
  const std::string& name = state_.settings.LogFileName;
  return ports_.program.PathOf(name.empty() ? kDefaultFile : name);
}

BlockHeading LogFile::Heading() const {
  const Settings& settings = state_.settings;
  const Form1& form = forms_.form1;
  return {settings.TxLat, settings.TxLong, settings.TxHeight,
          RigModeText(settings.RigModel, settings.RigMode, form.txtFrequency.text), form.cmbTxAntenna.text};
}

std::string LogFile::LogHeader() const {
  return BlockHeader(ports_.clock.Now(), Heading());
}

void LogFile::RecoverLastDrive() {
  journal_.Recover(Path(), [this](const Recovery& recovery) {
    state_.recovered_records = static_cast<int>(recovery.records);
    ShowHint(state_, forms_.form1);
    if (recovery.fault) {
      // Nothing is lost yet: the journal stays for the next time.
      ports_.dialogs.Notify(VersionedTitle, FaultText(recovery.fault->reason, recovery.fault->what),
                            Icon::kExclamation);
    }
  });
}

void LogFile::AddToJournal(const std::string& record) {
  if (!journal_.IsOpen()) journal_.Begin(Path(), BlockHeader(ports_.clock.Now(), HeadingInForce()));
  journal_.Add(record);
}

void LogFile::FlushAtEnd() {
  finishing_ = true;
  FlushLog(state_.settings.LogFileName);
  FinishWriting();
}

void LogFile::FinishWriting() {
  if (!journal_.Finish()) ports_.program.ReportLoss("Error saving data: the disk does not answer");
}

void LogFile::ShowLoggingState(bool off) {
  const bool starts = NotLogging && !off;
  NotLogging = off;
  TextBox& box = forms_.form1.lblLoggingInto;
  box.text = off ? "Not logging now !" : "Data to " + state_.settings.LogFileName;
  box.SelectAll();
  if (starts) CheckFolder();
  Run(health_changed);
  if (!starts) return;
  // What was collected before logging was switched on belongs to the next block too.
  for (const std::string& record : Records()) AddToJournal(record);
}

void LogFile::mnuSaveLogfile_Click() {
  if (LogCount == 0) return;
  kept_.emplace();
  const std::string answer = ports_.dialogs.AskText(
      VersionedTitle, "Give filename to log the data.\r\n\r\nApplication path = " + ports_.program.Folder(),
      state_.settings.LogFileName);
  const std::vector<std::string> kept =
      std::exchange(kept_, std::nullopt).value_or(std::vector<std::string>());
  if (ports_.program.Ended() || answer.empty()) return;
  state_.settings.LogFileName = answer;
  // Kept on purpose: naming a file is a wish to have the data in it, so from here on blocks are written even
  // where cmdLoggin still offers to start.
  const std::string header = BlockHeader(ports_.clock.Now(), HeadingInForce());
  for (auto first = kept.begin(); first != kept.end();) {
    const auto last = first + std::min<std::ptrdiff_t>(kRecordsPerBlock, kept.end() - first);
    WriteRecords(answer, header, {first, last});
    first = last;
  }
  ShowLoggingState(false);
  EndBlock();
}

void LogFile::EmptyBuffer() {
  for (std::size_t index = 1; index < LogBuffer.size(); ++index) LogBuffer[index].clear();
  LogCount = 0;
  ShowCount();
}

void LogFile::ShowCount() {
  forms_.form1.lblCatCount.caption = ShortNumber(LogCount);
}

void LogFile::ReportFault(const std::string& reason, const std::string& file_name) {
  const std::string text = FaultText(reason, file_name);
  if (finishing_) {
    ports_.program.ReportLoss(text);
    ports_.dialogs.Show(VersionedTitle, text, Icon::kCritical);
  } else {
    ports_.dialogs.Notify(VersionedTitle, text, Icon::kCritical);
  }
}

}  // namespace kestrum
