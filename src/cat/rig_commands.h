#pragma once

#include <string>

#include "cat/cat_link.h"
#include "cat/rigs.h"

namespace kestrum {

// Every command that is sent to a transceiver, per model.
class RigCommands {
 public:
  RigCommands(State& state, Form1& form, const PortSet<Clock, Beeper>& ports, CatLink& link);

  // Called after every S-meter read, whatever its outcome: shows RssiRaw.
  Handler on_reading;
  // What the header of a block tells is about to change: buffered records belong to the old one.
  Handler block_ends;

  // Reads the S-meter into RssiRaw, then calls on_reading. What the set sent is a reading of its own: false
  // when nothing came, also where silence counts as the value 0.
  bool ReadRssi();
  // Frequency text in kHz. Out of range: a beep and nothing else. A switched-off FT817: nothing at all.
  void SetFrequency(const std::string& text);
  // 1 to 7 selects that mode's button; 0 takes the mode from the buttons. Stores RigMode and sends it.
  void SetMode(int mode);
  // Whether ReadRssi asks the set nothing, because the power button says that it is off.
  bool IsNotRead() const;
  // Nothing at all when the port is closed.
  void CatLock(bool on);
  // FT817 only; other rigs, or a closed port, only leave the caption at "&Off". Off leaves tmrMain stopped.
  void CatPowerOnOff(bool on);

 private:
  // Each tells whether anything came from the set.
  bool Read(MeterRead way);
  bool ReadReceiveStatus();
  bool ReadMeter();
  bool ReadStatusFiveBytes();

  State& state_;
  Form1& form_;
  PortSet<Clock, Beeper> ports_;
  CatLink& link_;
};

}  // namespace kestrum
