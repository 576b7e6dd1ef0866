#include "dde_service.h"

#include <windows.h>

#include <QTimer>

#include "common/reader_contract.h"

namespace kestrum::posdex {
namespace {

std::string PartOfTopic(bool server) {
  const std::string topic = reader::kTopic;
  const std::size_t bar = topic.find('|');
  return server ? topic.substr(0, bar) : topic.substr(bar + 1);
}

std::map<std::string, std::string> AllTexts(const GpsTexts& texts) {
  std::map<std::string, std::string> all;
  for (const Item& item : kItems) all[item.name] = (texts.*item.text).toStdString();
  return all;
}

}  // namespace

DdeService::DdeService() : server_(PartOfTopic(true), PartOfTopic(false), AllTexts({})) {
  server_.on_clients = [this](int clients) {
    Q_EMIT StateChanged(clients == 0   ? QStringLiteral("offered over DDE")
                        : clients == 1 ? QStringLiteral("linked over DDE")
                                       : QStringLiteral("%1 programs linked over DDE").arg(clients));
  };
}

// DDE reaches the windows of one session, and so does the name of the mutex.
void DdeService::Start() {
  only_one_.Reset(::CreateMutexW(nullptr, FALSE, L"Local\\Kestrum-Posdex"));
  const bool taken = ::GetLastError() == ERROR_ALREADY_EXISTS;
  const bool offered = !taken && server_.Start();
  // From the event loop, as everything that this object tells.
  QTimer::singleShot(0, this, [this, taken, offered] {
    if (taken) {
      Q_EMIT NameTaken();
    } else {
      Q_EMIT StateChanged(
          offered ? QStringLiteral("offered over DDE")
                  : QStringLiteral("the system refuses DDE; end another program and start again"));
    }
  });
}

void DdeService::SetTexts(const GpsTexts& texts) {
  for (const Item& item : kItems) server_.SetText(item.name, (texts.*item.text).toStdString());
}

}  // namespace kestrum::posdex
