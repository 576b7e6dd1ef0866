#pragma once

#include <QObject>
#include <QSerialPort>
#include <QString>

#include "platform/serial_port.h"

namespace kestrum {

class QtSerialPort : public QObject, public SerialPort {
  Q_OBJECT

 public:
  // `application_folder` may hold links "com1" to "com6" that stand for devices.
  explicit QtSerialPort(QString application_folder);
  ~QtSerialPort() override;

  void SetPort(int number) override;
  void SetSettings(const std::string& settings) override { settings_ = settings; }
  bool Open() override;
  void Close() override;
  bool IsOpen() const override;
  bool WaitsForDevice() const override { return !IsOpen() && !awaited_.isEmpty(); }
  bool DeviceIsBack() const override;
  void Write(std::string_view bytes) override;
  std::string ReadAll() override;
  std::string DeviceName(int number) const override;
  std::optional<Fault> Trouble() const override { return trouble_; }

 private:
  bool ApplySettings();
  void OnError(QSerialPort::SerialPortError error);
  // Whether the line is in order and merely takes no bytes at the moment.
  bool TakesNoBytes(QSerialPort::SerialPortError error) const;
  void DropRefused();
  void CloseLost();
  void CloseLine();

  QString application_folder_;
  int number_ = 0;
  std::string settings_;
  QSerialPort port_;
  bool lost_ = false;     // the line has failed; the port is closed at the next chance
  bool refused_ = false;  // the line takes no bytes; what waits is dropped at the next chance
  std::optional<Fault> trouble_;
  QString awaited_;  // the device that has gone, or was not there; no other may take its place
};

}  // namespace kestrum
