#include "cat/cat_link.h"

#include <algorithm>
#include <chrono>

#include "cat/rig_text.h"
#include "cat/rigs.h"
#include "text/number_text.h"

namespace kestrum {
namespace {

constexpr std::chrono::milliseconds kReplyWindow{50};

}  // namespace

CatLink::CatLink(State& state, Form1& form, const PortSet<SerialPort, Clock>& ports)
    : state_(state), form_(form), ports_(ports) {}

void CatLink::OpenCatPort() {
  if (IsOpen()) CloseCatPort();
  const int port = state_.settings.ComPort;
  ports_.serial.SetPort(IsPort(port) ? port : 0);
  ports_.serial.SetSettings(NumberText(state_.settings.BaudRate) + ",N,8,2");
  ports_.serial.Open();
  ShowPortPanel();
}

void CatLink::CloseCatPort() {
  ports_.serial.Close();
}

bool CatLink::IsOpen() const {
  return ports_.serial.IsOpen();
}

void CatLink::ShowPortPanel() {
  const Settings& settings = state_.settings;
  StatusPanel& panel = form_.StatusBar1[2];
  ShowTrouble();
  if (!IsPort(settings.ComPort)) {
    panel.text = "No Comport";
    return;
  }
  const std::string speed = Replace(WithLeadingZero(ShortNumber(settings.BaudRate / 1000.0)), '.', 'k');
  panel.text = "Com" + ShortNumber(settings.ComPort) + "=" + speed + " ";
  const std::string rig = RigName(settings.RigModel);
  if (!rig.empty()) panel.text += rig + " ";
}

void CatLink::SendCatFrame() {
  form_.lblCatCmd.caption = "TX Cmd=" + frame.P1.text() + "," + frame.P2.text() + "," + frame.P3.text() +
                            "," + frame.P4.text() + ",[" + frame.Cmd.text() + "]";
  if (!IsOpen()) {
    CommentNotOpen();
    return;
  }
  ports_.serial.Write(FrameBytes(frame));
  Comment("Done");
}

void CatLink::SendDirect(const Bytes& bytes, const std::string& echo) {
  form_.lblCatCmd.caption = "TX Cmd= " + echo;
  Write(bytes);
}

void CatLink::Write(const Bytes& bytes) {
  ports_.serial.Write(std::string(bytes.value.begin(), bytes.value.end()));
}

CatLink::Reply CatLink::Transact(std::uint8_t opcode) {
  Write({{0, 0, 0, 0, opcode}});
  ports_.clock.Sleep(kReplyWindow);
  const std::string received = ports_.serial.ReadAll();
  Reply reply;
  reply.nothing_received = received.empty();
  const std::size_t count = std::min(received.size(), reply.bytes.size());
  std::copy_n(received.begin(), count, reply.bytes.begin());

  std::string echo = "RX Cmd= ";
  for (std::size_t i = 0; i + 1 < reply.bytes.size(); ++i) echo += NumberText(reply.bytes[i]) + ",";
  form_.lblCatCmd.caption = echo + " [" + ShortNumber(reply.bytes.back()) + "]";
  return reply;
}

void CatLink::Comment(const std::string& text) {
  form_.lblCatComment.caption = text;
}

void CatLink::CommentNotOpen() {
  Comment("Comport not open !");
  ShowTrouble();
}

void CatLink::ShowTrouble() {
  const std::optional<Fault> trouble = ports_.serial.Trouble();
  form_.StatusBar1[2].tool_tip = trouble ? trouble->reason : std::string();
}

}  // namespace kestrum
