#pragma once

#include <functional>
#include <string>

#include "cat/rig_commands.h"

namespace kestrum {

// The controls that choose rig, port and speed and work the rig by hand.
class FrontPanel {
 public:
  FrontPanel(State& state, Form1& form, const PortSet<SerialPort, Dialogs, Program>& ports, CatLink& link,
             RigCommands& rig);

  // Set by the application.
  Handler band_crossed;                                   // AboveHF has just changed
  Handler frequency_applied;                              // the rig has been tuned
  std::function<void(const std::string&)> show_rig_text;  // "Cat FT817 Com1" for the status label

  // Hangs the handlers below on the controls.
  void Wire();

  // At start-up: speed caption, port, check marks, mode; sends the mode if the port opens.
  void ApplySelection();
  // Tunes to a frequency text in kHz; an empty text does nothing. Carries out a band change across 30 MHz.
  void ApplyFrequency(const std::string& text);
  // Check mark of the present rig; the power button is usable with the FT817 only.
  void ShowRig();
  void ShowPort();
  void ShowBaud();
  // Rig and port for the status label.
  void ShowRigText();
  // Enables or disables the seven mode buttons.
  void OptModeEnable(bool enabled);
  // Captions and tool tips of cmdUp and cmdDown and the slider for the present step.
  void ShowStepAtStart();

  void ChooseRig(int rig_model);
  void ChoosePort(int number);
  void mnuBaud_Click();
  void cmdSetFreq_Click();
  void cmdUp_Click();
  void cmdDown_Click();
  void sldkHzSteps_Scroll();
  void chkLock_Click();
  void cmdFT817OnOff_Click();

 private:
  // Whether the set takes this frequency now.
  bool Accepts(double khz) const;
  bool HasPowerCommand() const;
  // Changes the band when the frequency lies on its other side.
  void CrossBand(double khz);
  void Step(int direction);
  void ShowStep(const std::string& down);
  void NotYetImplemented();

  State& state_;
  Form1& form_;
  PortSet<SerialPort, Dialogs, Program> ports_;
  CatLink& link_;
  RigCommands& rig_;
};

}  // namespace kestrum
