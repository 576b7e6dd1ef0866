#include "desktop/linux/qt_serial_port.h"

#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "desktop/linux/serial_devices.h"
#include "desktop/text_convert.h"
#include "text/number_text.h"
#include "text/text.h"

namespace kestrum {
namespace {

// A rig's reply is five bytes. What a babbling device sends beyond this waits at the device or is lost.
constexpr std::size_t kInputBuffer = 4096;
// More than this on the way out means that the line takes nothing; it is then dropped.
constexpr qint64 kOutputBuffer = 4096;

}  // namespace

QtSerialPort::QtSerialPort(QString application_folder) : application_folder_(std::move(application_folder)) {
  port_.setReadBufferSize(kInputBuffer);
  connect(&port_, &QSerialPort::errorOccurred, this, &QtSerialPort::OnError);
}

QtSerialPort::~QtSerialPort() {
  port_.disconnect(this);
  QtSerialPort::Close();
}

std::string QtSerialPort::DeviceName(int number) const {
  return number > 0 ? FromQt(SerialDevice(number, application_folder_)) : std::string();
}

// The settings text is "speed,parity,data bits,stop bits".
bool QtSerialPort::ApplySettings() {
  const QStringList fields = ToQt(settings_).split(QLatin1Char(','));
  if (fields.size() != 4) return false;
  const QString parity = fields[1].trimmed().toUpper();
  return port_.setBaudRate(fields[0].trimmed().toInt()) &&
         port_.setParity(parity == QLatin1String("E")   ? QSerialPort::EvenParity
                         : parity == QLatin1String("O") ? QSerialPort::OddParity
                                                        : QSerialPort::NoParity) &&
         port_.setDataBits(static_cast<QSerialPort::DataBits>(fields[2].trimmed().toInt())) &&
         port_.setStopBits(fields[3].trimmed() == QLatin1String("2") ? QSerialPort::TwoStop
                                                                     : QSerialPort::OneStop) &&
         port_.setFlowControl(QSerialPort::NoFlowControl);
}

void QtSerialPort::SetPort(int number) {
  if (number != number_) awaited_.clear();
  number_ = number;
}

bool QtSerialPort::DeviceIsBack() const {
  return WaitsForDevice() && !WhyDeviceIsClosed(awaited_);
}

bool QtSerialPort::Open() {
  CloseLine();
  trouble_.reset();
  if (number_ <= 0) {
    trouble_ = Fault{"", "No serial port is chosen."};
    return false;
  }
  const QString device = SerialDevice(number_, application_folder_);
  port_.setPortName(device);
  const bool settings_are_good = ApplySettings();
  if (settings_are_good && port_.open(QIODevice::ReadWrite)) {
    lost_ = false;
    trouble_.reset();
    awaited_.clear();
    return true;
  }
  trouble_ = settings_are_good ? WhyDeviceIsClosed(device) : std::nullopt;
  const std::string name = FromQt(device);
  // The device itself may be used, so somebody else holds it.
  if (!trouble_ && port_.error() == QSerialPort::PermissionError) {
    trouble_ = Fault{name, name + " is in use by another program. Close it, then choose the port again."};
  }
  if (!trouble_) {
    const std::string reason = FromQt(port_.errorString());
    trouble_ = Fault{name, name + " cannot be opened with \"" + Trim(settings_) + "\": " + reason + "."};
  }
  port_.close();
  if (!QFileInfo::exists(device)) awaited_ = device;
  return false;
}

void QtSerialPort::Close() {
  awaited_.clear();
  CloseLine();
}

void QtSerialPort::CloseLine() {
  if (!port_.isOpen()) return;
  if (!lost_) DrainSerialLine(static_cast<int>(port_.handle()));
  port_.close();
  lost_ = false;
}

bool QtSerialPort::IsOpen() const {
  return port_.isOpen() && !lost_;
}

void QtSerialPort::Write(std::string_view bytes) {
  if (!IsOpen()) return;
  // A command goes to the line at once; what it does not take, and what is wrong with it, is the port's
  // matter.
  if (port_.bytesToWrite() == 0) bytes.remove_prefix(WriteToLine(static_cast<int>(port_.handle()), bytes));
  if (bytes.empty()) return;
  if (port_.bytesToWrite() > kOutputBuffer) port_.clear(QSerialPort::Output);
  port_.write(bytes.data(), static_cast<qint64>(bytes.size()));
  port_.flush();
  DropRefused();
  CloseLost();
}

std::string QtSerialPort::ReadAll() {
  if (!IsOpen()) return {};
  // No events have run since the rig answered: ask the line itself what has come, after what events have
  // read before. An endless stream ends at the size of the buffer.
  const int line = static_cast<int>(port_.handle());
  std::string bytes;
  if (port_.bytesAvailable() > 0) bytes = port_.read(kInputBuffer).toStdString();
  bytes += ReadFromLine(line, kInputBuffer - std::min(bytes.size(), kInputBuffer));
  // Silence may be a line that has gone; the port finds out.
  if (bytes.empty() && SerialLineHasNews(line)) port_.waitForReadyRead(0);
  CloseLost();
  return bytes;
}

void QtSerialPort::OnError(QSerialPort::SerialPortError error) {
  if (error == QSerialPort::NoError || error == QSerialPort::TimeoutError ||
      error == QSerialPort::NotOpenError || !port_.isOpen()) {
    return;
  }
  if (TakesNoBytes(error)) {
    refused_ = true;
    QMetaObject::invokeMethod(this, &QtSerialPort::DropRefused, Qt::QueuedConnection);
    return;
  }
  lost_ = true;
  awaited_ = port_.portName();
  if (!awaited_.startsWith(QLatin1Char('/'))) awaited_.prepend(QStringLiteral("/dev/"));
  const std::string name = FromQt(port_.portName());
  trouble_ = Fault{name, name + " was lost: " + FromQt(port_.errorString()) + "."};
  // Not from inside the port's own code.
  QMetaObject::invokeMethod(this, &QtSerialPort::CloseLost, Qt::QueuedConnection);
}

// A full line and a device that has gone are reported alike; the device itself knows.
bool QtSerialPort::TakesNoBytes(QSerialPort::SerialPortError error) const {
  const bool may_be_full = error == QSerialPort::ResourceError || error == QSerialPort::WriteError ||
                           error == QSerialPort::UnknownError;
  return may_be_full && port_.bytesToWrite() > 0 && SerialLineLives(static_cast<int>(port_.handle()));
}

// The rest of a command that has begun would be taken for the beginning of the next one.
void QtSerialPort::DropRefused() {
  if (!refused_) return;
  refused_ = false;
  if (port_.isOpen()) port_.clear(QSerialPort::Output);
}

void QtSerialPort::CloseLost() {
  if (lost_) CloseLine();
}

}  // namespace kestrum
