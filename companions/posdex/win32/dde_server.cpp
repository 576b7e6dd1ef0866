#include "dde_server.h"

// The second one does not stand without the first.
// clang-format off
#include <windows.h>
#include <ddeml.h>
// clang-format on

#include <array>
#include <set>
#include <utility>

#include "common/win32/wide_text.h"

namespace kestrum::posdex {

class DdeServer::Talk {
 public:
  Talk(DdeServer& owner, std::string service, std::string topic, std::map<std::string, std::string> texts)
      : owner_(owner), service_(std::move(service)), topic_(std::move(topic)), texts_(std::move(texts)) {}
  ~Talk();
  Talk(const Talk&) = delete;
  Talk& operator=(const Talk&) = delete;

  bool Start();
  void SetText(const std::string& item, const std::string& text);

 private:
  static HDDEDATA CALLBACK OnEvent(UINT type, UINT format, HCONV conversation, HSZ name1, HSZ name2,
                                   HDDEDATA data, ULONG_PTR data1, ULONG_PTR data2);
  HDDEDATA Answer(UINT type, UINT format, HCONV conversation, HSZ name1, HSZ name2);
  HDDEDATA TextOfItem(HSZ item) const;
  bool HasItem(HSZ item) const;
  void CountClients();

  // The system's callback has no room for an object of its own.
  static thread_local Talk* current_;

  DdeServer& owner_;
  std::string service_;
  std::string topic_;
  std::map<std::string, std::string> texts_;
  std::map<std::string, HSZ> items_;
  std::set<HCONV> clients_;
  DWORD instance_ = 0;
  HSZ service_name_ = nullptr;
  HSZ topic_name_ = nullptr;
};

thread_local DdeServer::Talk* DdeServer::Talk::current_ = nullptr;

namespace {

HDDEDATA Yes() {
  return reinterpret_cast<HDDEDATA>(static_cast<ULONG_PTR>(TRUE));
}

}  // namespace

HDDEDATA CALLBACK DdeServer::Talk::OnEvent(UINT type, UINT format, HCONV conversation, HSZ name1, HSZ name2,
                                           HDDEDATA /*data*/, ULONG_PTR /*data1*/, ULONG_PTR /*data2*/) {
  return current_ != nullptr ? current_->Answer(type, format, conversation, name1, name2) : nullptr;
}

// `name1` is the topic, `name2` the item, or the service of a client that comes. Only plain text is spoken.
HDDEDATA DdeServer::Talk::Answer(UINT type, UINT format, HCONV conversation, HSZ name1, HSZ name2) {
  switch (type) {
    case XTYP_CONNECT:
      return ::DdeCmpStringHandles(name1, topic_name_) == 0 &&
                     ::DdeCmpStringHandles(name2, service_name_) == 0
                 ? Yes()
                 : nullptr;
    case XTYP_CONNECT_CONFIRM:
      clients_.insert(conversation);
      CountClients();
      return nullptr;
    case XTYP_DISCONNECT:
      clients_.erase(conversation);
      CountClients();
      return nullptr;
    case XTYP_ADVSTART:
      return format == CF_TEXT && HasItem(name2) ? Yes() : nullptr;
    case XTYP_REQUEST:
    case XTYP_ADVREQ:
      return format == CF_TEXT ? TextOfItem(name2) : nullptr;
    default:
      return nullptr;
  }
}

void DdeServer::Talk::CountClients() {
  owner_.on_clients(static_cast<int>(clients_.size()));
}

bool DdeServer::Talk::HasItem(HSZ item) const {
  for (const auto& [name, handle] : items_) {
    if (::DdeCmpStringHandles(handle, item) == 0) return true;
  }
  return false;
}

HDDEDATA DdeServer::Talk::TextOfItem(HSZ item) const {
  for (const auto& [name, handle] : items_) {
    if (::DdeCmpStringHandles(handle, item) != 0) continue;
    std::string text = texts_.at(name);
    return ::DdeCreateDataHandle(instance_, reinterpret_cast<LPBYTE>(text.data()),
                                 static_cast<DWORD>(text.size() + 1), 0, handle, CF_TEXT, 0);
  }
  return nullptr;
}

bool DdeServer::Talk::Start() {
  current_ = this;
  if (::DdeInitializeW(&instance_, &Talk::OnEvent,
                       APPCLASS_STANDARD | CBF_FAIL_EXECUTES | CBF_FAIL_POKES | CBF_SKIP_REGISTRATIONS |
                           CBF_SKIP_UNREGISTRATIONS,
                       0) != DMLERR_NO_ERROR) {
    instance_ = 0;
    return false;
  }
  const auto handle_of = [this](const std::string& text) {
    return ::DdeCreateStringHandleW(instance_, win32::Wide(text).c_str(), CP_WINUNICODE);
  };
  service_name_ = handle_of(service_);
  topic_name_ = handle_of(topic_);
  for (const auto& [name, text] : texts_) items_[name] = handle_of(name);
  return ::DdeNameService(instance_, service_name_, nullptr, DNS_REGISTER) != nullptr;
}

void DdeServer::Talk::SetText(const std::string& item, const std::string& text) {
  const auto old = texts_.find(item);
  if (old == texts_.end() || old->second == text) return;
  old->second = text;
  if (instance_ != 0) ::DdePostAdvise(instance_, topic_name_, items_.at(item));
}

DdeServer::Talk::~Talk() {
  if (instance_ != 0) {
    ::DdeNameService(instance_, service_name_, nullptr, DNS_UNREGISTER);
    for (const auto& [name, handle] : items_) ::DdeFreeStringHandle(instance_, handle);
    ::DdeFreeStringHandle(instance_, service_name_);
    ::DdeFreeStringHandle(instance_, topic_name_);
    ::DdeUninitialize(instance_);
  }
  if (current_ == this) current_ = nullptr;
}

DdeServer::DdeServer(std::string service, std::string topic, std::map<std::string, std::string> texts)
    : talk_(std::make_unique<Talk>(*this, std::move(service), std::move(topic), std::move(texts))) {}

DdeServer::~DdeServer() {
  on_clients = [](int) {};
}

bool DdeServer::Start() {
  return talk_->Start();
}

void DdeServer::SetText(const std::string& item, const std::string& text) {
  talk_->SetText(item, text);
}

}  // namespace kestrum::posdex
