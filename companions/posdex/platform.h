#pragma once

#include <QString>
#include <QStringList>
#include <memory>

#include "text_service.h"

// What differs from one system to the next; each folder linux/ or win32/ implements it, and SerialSource.
namespace kestrum::posdex {

std::unique_ptr<TextService> MakeTextService();

// The serial ports that a receiver may be on, without those of the set. `folder` is the program's; `ports`
// holds a link for each port that is plugged in, where the system has such a folder.
QStringList ReceiverPorts(const QString& folder, const QString& ports);

// Whether windows can be shown. Asked before the toolkit starts.
bool HasDisplay();

// For --help: how the texts reach the logger, and where "auto" looks for serial ports. For who starts a
// second reader: where the first one is.
QString LinkName();
QString LinkScope();
QString PortsName();

}  // namespace kestrum::posdex
