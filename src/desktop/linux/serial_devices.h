#pragma once

#include <QString>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "common/fault.h"

// Serial ports of Linux: which device a port number stands for, and why one does not open.
namespace kestrum {

// The device of a serial port number counted from 1.
QString SerialDevice(int number, const QString& application_folder);
// Why a device cannot be opened, the reason a sentence that names it; nothing when nothing is known.
std::optional<Fault> WhyDeviceIsClosed(const QString& device);
// Whether the device behind an open serial line is still there.
bool SerialLineLives(int handle);
// Whether bytes wait at an open serial line, or an error does.
bool SerialLineHasNews(int handle);
// At most `most` of the bytes that wait there; none when an error does.
std::string ReadFromLine(int handle, std::size_t most);
// Returns how many bytes the line has taken; less than all when it is full or an error waits there.
std::size_t WriteToLine(int handle, std::string_view bytes);
// Waits a moment until the line has sent what it holds, so that closing does not cut a command in two.
void DrainSerialLine(int handle);

}  // namespace kestrum
