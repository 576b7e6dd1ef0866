#include "ui/about.h"

#include "config/app_title.h"

namespace kestrum {

void ShowAbout(const PortSet<Dialogs, Program>& ports) {
  ports.dialogs.Show(VersionedTitle,
                     "Auto RF Field strenght logger\r\n"
                     "Made by the Kestrum developers\r\n"
                     "Exe name = " +
                         ports.program.ExeName() +
                         "\r\n"
                         "Contact: see the README of the project\r\n"
                         "Can display in Orvandi.exe through:\r\n"
                         "\\RSSI-GPS.log\r\n"
                         "Not all working 100%",
                     Icon::kInformation);
}

void ShowShortCuts(const PortSet<Dialogs, Program>& ports) {
  ports.dialogs.Show(VersionedTitle,
                     "ShortCuts\r\n"
                     "---------------\r\n"
                     "F1= Help\r\n"
                     "F3 = Logging\r\n"
                     "F5 = Minimal Display\r\n"
                     "---------------",
                     Icon::kInformation);
}

}  // namespace kestrum
