#pragma once

#include <QString>

// Serial ports of Linux: which device a port number stands for, and why one does not open.
namespace kestrum {

// The device of a serial port number counted from 1.
QString SerialDevice(int number, const QString& application_folder);
// Why a device that exists cannot be opened, as a sentence; empty when nothing is known.
QString WhyDeviceIsClosed(const QString& device);
// Whether the device behind an open serial line is still there.
bool SerialLineLives(int handle);
// Waits a moment until the line has sent what it holds, so that closing does not cut a command in two.
void DrainSerialLine(int handle);

}  // namespace kestrum
