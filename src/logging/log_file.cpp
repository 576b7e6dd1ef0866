#include "logging/log_file.h"

#include <vector>

#include "cat/rig_text.h"
#include "config/app_title.h"
#include "logging/log_record.h"
#include "text/number_text.h"
#include "text/text.h"
#include "text/text_file.h"

namespace kestrum {
namespace {

constexpr int kRecordsPerBlock = 100;

}  // namespace

LogFile::LogFile(State& state, Forms& forms, const Ports& ports, const CalibrationTable& table,
                 MinimalDisplay& minimal)
    : state_(state), forms_(forms), ports_(ports), table_(table), minimal_(minimal) {}

void LogFile::StampStart() {
  LogBuffer[0] = "Start @" + StartStampText(ports_.clock.Now());
  forms_.form1.lblLog.caption = LogBuffer[0];
}

void LogFile::AddLogRecord() {
  const TableRow& current = table_.Current();
  ++LogCount;
  auto& record = LogBuffer.at(static_cast<std::size_t>(LogCount));
  record = LogRecord(ports_.clock.Now(), forms_.form1, state_.RssiRaw, current);
  forms_.form1.lblLog.caption = record;
  ShowCount();
  if (forms_.form1.mnuMinimalDisplay.checked) minimal_.ShowRecord(current[0], current[1], current[2]);
  if (LogCount >= kRecordsPerBlock) FlushLog(state_.settings.LogFileName);
}

void LogFile::FlushLog(const std::string& file_name) {
  if (NotLogging) {
    EmptyBuffer();
    return;
  }
  std::string path = file_name;
  if (path.empty()) {
    path = ports_.program.PathOf("\\RSSI-GPS.log");
    state_.settings.LogFileName = path;
    ShowLoggingState(false);
  }
  const std::string header = LogHeader();
  forms_.form1.lblLog.tool_tip = header;
  const std::string dashes(header.size(), '-');
  std::vector<std::string> lines = {dashes, header, dashes};
  for (std::size_t index = 1; index < LogBuffer.size(); ++index) {
    if (!LogBuffer[index].empty()) lines.push_back(LogBuffer[index]);
  }
  const FileFault fault = ports_.files.Append(path, JoinLines(lines));
  // Emptied before a message is shown: records that come in under the open box start a new block.
  EmptyBuffer();
  if (fault) ReportFault(*fault, path);
}

void LogFile::FlushPending() {
  if (LogCount > 0) FlushLog(state_.settings.LogFileName);
}

std::string LogFile::LogHeader() const {
  const Settings& settings = state_.settings;
  const Form1& form = forms_.form1;
  return BlockStampText(ports_.clock.Now()) + ", " + settings.TxLat + ", " + settings.TxLong + ", " +
         settings.TxHeight + ", " + RigModeText(settings.RigModel, settings.RigMode, form.txtFrequency.text) +
         ", " + TrimLeft(form.cmbTxAntenna.text);
}

void LogFile::ShowLoggingState(bool off) {
  NotLogging = off;
  TextBox& box = forms_.form1.lblLoggingInto;
  box.text = off ? "Not logging now !" : "Data to " + state_.settings.LogFileName;
  box.SelectAll();
}

void LogFile::mnuSaveLogfile_Click() {
  if (LogCount == 0) return;
  const std::string answer = ports_.dialogs.AskText(
      VersionedTitle, "Give filename to log the data.\r\n\r\nApplication path = " + ports_.program.Folder(),
      state_.settings.LogFileName);
  if (ports_.program.Ended() || answer.empty()) return;
  state_.settings.LogFileName = answer;
  // Kept on purpose: naming a file is a wish to have the data in it, so from here on blocks are written even
  // where cmdLoggin still offers to start.
  ShowLoggingState(false);
  FlushPending();
}

void LogFile::EmptyBuffer() {
  for (std::size_t index = 1; index < LogBuffer.size(); ++index) LogBuffer[index].clear();
  LogCount = 0;
  ShowCount();
}

void LogFile::ShowCount() {
  forms_.form1.lblCatCount.caption = ShortNumber(LogCount);
}

void LogFile::ReportFault(const std::string& description, const std::string& file_name) {
  ports_.dialogs.Show(VersionedTitle, "Error saving data \r\n" + description + "\r\n" + file_name,
                      Icon::kCritical);
}

}  // namespace kestrum
