#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "common/fault.h"
#include "platform/file_store.h"
#include "platform/program.h"
#include "platform/serial_port.h"
#include "platform/text_links.h"
#include "platform/window_lookup.h"

class QObject;

// What differs from one operating system to the next; each folder linux/ or win32/ implements it.
namespace kestrum {

// Links to other programs' texts and the look-up of their windows: one object, since both may share a line.
class LinksAndWindows : public TextLinks, public WindowLookup {
 public:
  // Runs what an arrived text sets off; set before the first link is made.
  std::function<void(const std::function<void()>&)> enter;
  // Tells of a companion that this program has just started: its file name and its process. One that is not
  // ready to be found yet when the program ends is ended all the same.
  virtual void Started(const std::string& name, qint64 process) = 0;
};
std::unique_ptr<LinksAndWindows> MakeLinks();

// `folder` is the application folder; its 8-bit form at the beginning of a path stands for the true name.
std::unique_ptr<FileStore> MakeFileStore(const QString& folder);

// `application_folder` may hold links "com1" to "com6" that stand for devices where the system has such.
std::unique_ptr<SerialPort> MakeSerialPort(const QString& application_folder);

// Marks this process as the user's only instance in the application folder `folder` until it ends, however it
// ends. False when another one runs there.
bool ClaimSingleInstance(const QString& folder);

// Starts an executable in `folder` without waiting; its process, or nothing when that is not possible.
std::optional<qint64> StartProcess(const QString& path, const QString& folder, ShowStyle style);

// File name of an executable called "Posdex.exe" in a configuration or a message.
QString ExecutableName(const QString& name);

// Why no window can be shown, the reason a sentence; nothing when nothing speaks against it. Asked before the
// toolkit starts; `arguments` are those of the command line.
std::optional<Fault> WhyNoDisplay(std::span<char*> arguments);

// Calls `ask_to_end` as a window event when the system asks the process to end.
void OnEndRequests(QObject* context, std::function<void()> ask_to_end);

}  // namespace kestrum
