#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "cat/cat_frame.h"
#include "config/settings.h"
#include "forms/form1.h"
#include "platform/ports.h"

namespace kestrum {

// The serial line to the rig: five-byte commands, a reply window of 50 ms. Outcomes go to lblCatComment, the
// bytes to lblCatCmd; no message box is ever shown.
class CatLink {
 public:
  CatLink(State& state, Form1& form, const PortSet<SerialPort, Clock>& ports);

  // What the last set-frequency command filled in; "000" five times at first.
  CatFrame frame;

  // (Re)opens the port from ComPort and BaudRate and shows the third status panel. A port that cannot be
  // opened stays closed; the panel's tool tip then says why.
  void OpenCatPort();
  void CloseCatPort();
  bool IsOpen() const;

  // The third status panel: port, speed and rig.
  void ShowPortPanel();

  // Echoes and sends `frame`; no reply is read.
  void SendCatFrame();

  // Five bytes built on the spot. SendDirect echoes "TX Cmd= " and the text given, then writes.
  struct Bytes {
    std::array<std::uint8_t, 5> value{};  // four parameters, opcode
  };
  void SendDirect(const Bytes& bytes, const std::string& echo);
  void Write(const Bytes& bytes);

  struct Reply {
    std::array<std::uint8_t, 5> bytes{};  // what did not arrive is 0
    bool nothing_received = true;
  };
  // For an S-meter read: four zero bytes and the opcode, 50 ms, one read, the echo "RX Cmd= ...". The port
  // must be open.
  Reply Transact(std::uint8_t opcode);

  void Comment(const std::string& text);
  // "Comport not open !", and the panel's tool tip says why.
  void CommentNotOpen();
  // The tool tip of the third status panel: why the port is closed.
  void ShowTrouble();

 private:
  State& state_;
  Form1& form_;
  PortSet<SerialPort, Clock> ports_;
};

}  // namespace kestrum
