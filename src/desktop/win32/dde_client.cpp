#include "desktop/win32/dde_client.h"

// The second one does not stand without the first.
// clang-format off
#include <windows.h>
#include <ddeml.h>
// clang-format on

#include <algorithm>
#include <mutex>
#include <set>
#include <utility>
#include <vector>

#include "common/win32/handle.h"
#include "common/win32/wide_text.h"

namespace kestrum {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

// For an answer of the server.
constexpr DWORD kAnswerLimitMs = 1000;
constexpr DWORD kLongestEndMs = 500;
// How often the thread looks whether the server's window is still there: nobody tells of one that was killed.
constexpr milliseconds kTick{250};
constexpr std::size_t kLongestText = 4096;
// What comes behind an answer follows it at once; a server that never stops talking is not waited for.
constexpr DWORD kQuietMs = 20;
constexpr int kMostMessages = 50;

}  // namespace

// What both threads know.
struct DdeClient::Shared {
  std::string service;
  std::string topic;
  win32::Handle wake{::CreateEventW(nullptr, FALSE, FALSE, nullptr)};
  win32::Handle finished{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};

  mutable std::mutex mutex;
  OnNews on_news;  // called with the mutex held, so that its owner may go
  std::set<std::string> wanted;
  Texts texts;
  bool connected = false;
  std::optional<steady_clock::time_point> last_heard;
  bool ending = false;
};

// The client's thread.
class DdeClient::Talk {
 public:
  explicit Talk(Shared& shared) : shared_(shared) {}
  void Run();

 private:
  static HDDEDATA CALLBACK OnEvent(UINT type, UINT format, HCONV conversation, HSZ topic, HSZ item,
                                   HDDEDATA data, ULONG_PTR data1, ULONG_PTR data2);
  HDDEDATA Take(UINT type, HSZ item, HDDEDATA data);
  bool Step();
  bool Open();
  void Close();
  void Connect();
  void FollowLinks(const std::set<std::string>& wanted);
  bool Change(const std::string& item, UINT type);
  void Ask(const std::string& item);
  void Probe(const std::set<std::string>& wanted);
  void LetTheServerFinish() const;
  bool ServerIsGone() const;
  bool Ending() const;
  void Lose();
  void Heard();
  void Keep(const std::string& item, HDDEDATA data);
  void WaitAndDispatch() const;
  static void Dispatch();
  HSZ NameOf(const std::string& text);
  std::string TextOf(HSZ name) const;

  // The system's callback has no room for an object of its own.
  static thread_local Talk* current_;

  Shared& shared_;
  DWORD instance_ = 0;
  HCONV conversation_ = nullptr;
  bool lost_ = false;  // told by the server, perhaps in the middle of a question
  std::map<std::string, HSZ> names_;
  std::set<std::string> linked_;
  std::set<std::string> followed_;  // what has been wanted when the links were looked at last
  std::string probed_;              // the item that was asked for last
  steady_clock::time_point links_due_;
  steady_clock::time_point next_look_;
  steady_clock::time_point next_probe_;
};

thread_local DdeClient::Talk* DdeClient::Talk::current_ = nullptr;

HDDEDATA CALLBACK DdeClient::Talk::OnEvent(UINT type, UINT /*format*/, HCONV /*conversation*/, HSZ /*topic*/,
                                           HSZ item, HDDEDATA data, ULONG_PTR /*data1*/,
                                           ULONG_PTR /*data2*/) {
  return current_ != nullptr ? current_->Take(type, item, data) : nullptr;
}

HDDEDATA DdeClient::Talk::Take(UINT type, HSZ item, HDDEDATA data) {
  switch (type) {
    case XTYP_ADVDATA:
      Keep(TextOf(item), data);
      return reinterpret_cast<HDDEDATA>(static_cast<ULONG_PTR>(DDE_FACK));
    case XTYP_DISCONNECT:
      lost_ = true;
      return nullptr;
    case XTYP_REGISTER:
      next_look_ = steady_clock::now();  // perhaps the one that is waited for
      return nullptr;
    default:
      return nullptr;
  }
}

// Kept until the end: a name that is freed takes its link with it on some systems.
HSZ DdeClient::Talk::NameOf(const std::string& text) {
  HSZ& name = names_[text];
  if (name == nullptr) name = ::DdeCreateStringHandleW(instance_, win32::Wide(text).c_str(), CP_WINUNICODE);
  return name;
}

std::string DdeClient::Talk::TextOf(HSZ name) const {
  const DWORD length = ::DdeQueryStringW(instance_, name, nullptr, 0, CP_WINUNICODE);
  std::wstring text(length + 1U, L'\0');
  ::DdeQueryStringW(instance_, name, text.data(), length + 1, CP_WINUNICODE);
  text.resize(length);
  return win32::Narrow(text);
}

void DdeClient::Talk::Heard() {
  const std::lock_guard lock(shared_.mutex);
  shared_.last_heard = steady_clock::now();
  next_probe_ = *shared_.last_heard + kProbeEvery;
}

// Texts are 8-bit and end with a zero byte.
void DdeClient::Talk::Keep(const std::string& item, HDDEDATA data) {
  std::string text(std::min<std::size_t>(::DdeGetData(data, nullptr, 0, 0), kLongestText), '\0');
  if (data == nullptr || text.empty()) return;
  ::DdeGetData(data, reinterpret_cast<LPBYTE>(text.data()), static_cast<DWORD>(text.size()), 0);
  text.resize(std::min(text.find('\0'), text.size()));
  Heard();
  {
    const std::lock_guard lock(shared_.mutex);
    // Items have no letter case on their way.
    const auto asked = std::find_if(
        shared_.wanted.begin(), shared_.wanted.end(),
        [&item](const std::string& name) { return ::lstrcmpiA(name.c_str(), item.c_str()) == 0; });
    if (asked == shared_.wanted.end()) return;
    shared_.texts[*asked] = std::move(text);
    shared_.on_news();
  }
}

bool DdeClient::Talk::Open() {
  if (instance_ != 0) return true;
  if (::DdeInitializeW(&instance_, &Talk::OnEvent, APPCLASS_STANDARD | APPCMD_CLIENTONLY, 0) !=
      DMLERR_NO_ERROR)
    instance_ = 0;
  return instance_ != 0;
}

// Ends the conversation and gives back everything that belongs to it.
void DdeClient::Talk::Close() {
  if (conversation_ != nullptr) ::DdeDisconnect(conversation_);
  conversation_ = nullptr;
  names_.clear();
  if (instance_ != 0) ::DdeUninitialize(instance_);
  instance_ = 0;
}

void DdeClient::Talk::Connect() {
  next_look_ = steady_clock::now() + kLookEvery;
  if (!Open()) return;
  const HSZ service = NameOf(shared_.service);
  const HSZ topic = NameOf(shared_.topic);
  lost_ = false;
  conversation_ = ::DdeConnect(instance_, service, topic, nullptr);
  if (conversation_ == nullptr) return;
  Heard();
  const std::lock_guard lock(shared_.mutex);
  shared_.connected = true;
  shared_.on_news();
}

bool DdeClient::Talk::Change(const std::string& item, UINT type) {
  return ::DdeClientTransaction(nullptr, 0, conversation_, NameOf(item), CF_TEXT, type, kAnswerLimitMs,
                                nullptr) != nullptr;
}

void DdeClient::Talk::Ask(const std::string& item) {
  probed_ = item;
  const HDDEDATA data = ::DdeClientTransaction(nullptr, 0, conversation_, NameOf(item), CF_TEXT, XTYP_REQUEST,
                                               kAnswerLimitMs, nullptr);
  const UINT error = data == nullptr ? ::DdeGetLastError(instance_) : UINT{DMLERR_NO_ERROR};
  if (data != nullptr) {
    Keep(item, data);
    ::DdeFreeDataHandle(data);
  } else if (error == DMLERR_NOTPROCESSED) {
    Heard();  // it has said no
  } else if (error == DMLERR_POSTMSG_FAILED || error == DMLERR_SERVER_DIED ||
             error == DMLERR_NO_CONV_ESTABLISHED) {
    lost_ = true;
  }
  LetTheServerFinish();
}

// Some servers send an acknowledgement behind the text that was asked for. The system would take it for the
// answer to whatever is asked next, so it is fetched first.
void DdeClient::Talk::LetTheServerFinish() const {
  for (int i = 0; i < kMostMessages; ++i) {
    if (::MsgWaitForMultipleObjectsEx(0, nullptr, kQuietMs, QS_ALLINPUT, MWMO_INPUTAVAILABLE) !=
        WAIT_OBJECT_0)
      return;
    Dispatch();
  }
}

// All the links come first: what changes from then on comes by itself, whatever is asked for meanwhile.
void DdeClient::Talk::FollowLinks(const std::set<std::string>& wanted) {
  std::vector<std::string> unheard;
  bool all_linked = true;
  for (const std::string& item : wanted) {
    if (lost_ || Ending()) return;
    if (linked_.contains(item)) continue;
    // What a server does not link it may still answer; it is asked again in a while.
    const bool linked = Change(item, XTYP_ADVSTART);
    if (linked) linked_.insert(item);
    all_linked = all_linked && linked;
    unheard.push_back(item);
  }
  const std::set<std::string> linked = linked_;
  for (const std::string& item : linked) {
    if (lost_ || Ending()) return;
    if (wanted.contains(item)) continue;
    Change(item, XTYP_ADVSTOP);
    linked_.erase(item);
  }
  for (const std::string& item : unheard) {
    if (lost_ || Ending()) return;
    Ask(item);
  }
  links_due_ = all_linked ? steady_clock::time_point::max() : steady_clock::now() + kProbeEvery;
  followed_ = wanted;
}

// The items take turns, so that a text that was missed is made up for.
void DdeClient::Talk::Probe(const std::set<std::string>& wanted) {
  next_probe_ = steady_clock::now() + kProbeEvery;
  const auto next = wanted.upper_bound(probed_);
  Ask(next != wanted.end() ? *next : *wanted.begin());
}

bool DdeClient::Talk::ServerIsGone() const {
  if (lost_) return true;
  CONVINFO about{};
  about.cb = sizeof(about);
  if (::DdeQueryConvInfo(conversation_, QID_SYNC, &about) == 0) return true;
  return (about.wStatus & ST_CONNECTED) == 0 ||
         (about.hwndPartner != nullptr && ::IsWindow(about.hwndPartner) == 0);
}

bool DdeClient::Talk::Ending() const {
  const std::lock_guard lock(shared_.mutex);
  return shared_.ending;
}

// The next server is met from scratch: some systems keep a conversation whose server has gone, and refuse the
// same one again.
void DdeClient::Talk::Lose() {
  Close();
  linked_.clear();
  followed_.clear();
  const std::lock_guard lock(shared_.mutex);
  shared_.connected = false;
  shared_.last_heard.reset();
  shared_.on_news();
}

// One round; false at the end.
bool DdeClient::Talk::Step() {
  std::set<std::string> wanted;
  {
    const std::lock_guard lock(shared_.mutex);
    if (shared_.ending) return false;
    wanted = shared_.wanted;
  }
  const auto now = steady_clock::now();
  if (conversation_ != nullptr && ServerIsGone()) Lose();
  if (conversation_ == nullptr && !wanted.empty() && now >= next_look_) Connect();
  if (conversation_ != nullptr && (now >= links_due_ || wanted != followed_)) FollowLinks(wanted);
  if (conversation_ != nullptr && !lost_ && !wanted.empty() && now >= next_probe_) Probe(wanted);
  return true;
}

void DdeClient::Talk::WaitAndDispatch() const {
  HANDLE wake = shared_.wake.get();
  ::MsgWaitForMultipleObjectsEx(1, &wake, static_cast<DWORD>(kTick.count()), QS_ALLINPUT,
                                MWMO_INPUTAVAILABLE);
  Dispatch();
}

void DdeClient::Talk::Dispatch() {
  MSG message{};
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
  }
}

void DdeClient::Talk::Run() {
  current_ = this;
  while (Step()) WaitAndDispatch();
  Close();
  current_ = nullptr;
  ::SetEvent(shared_.finished.get());
}

DdeClient::DdeClient(std::string service, std::string topic, OnNews on_news)
    : shared_(std::make_shared<Shared>()) {
  shared_->service = std::move(service);
  shared_->topic = std::move(topic);
  shared_->on_news = std::move(on_news);
  thread_ = std::thread([shared = shared_] { Talk(*shared).Run(); });
}

DdeClient::~DdeClient() {
  {
    const std::lock_guard lock(shared_->mutex);
    shared_->ending = true;
    shared_->on_news = [] {};
  }
  ::SetEvent(shared_->wake.get());
  // A thread that still waits for somebody's answer goes with the process.
  if (::WaitForSingleObject(shared_->finished.get(), kLongestEndMs) == WAIT_OBJECT_0) {
    thread_.join();
  } else {
    thread_.detach();
  }
}

void DdeClient::Link(const std::string& item) {
  {
    const std::lock_guard lock(shared_->mutex);
    shared_->wanted.insert(item);
  }
  ::SetEvent(shared_->wake.get());
}

void DdeClient::Unlink(const std::string& item) {
  {
    const std::lock_guard lock(shared_->mutex);
    shared_->wanted.erase(item);
    shared_->texts.erase(item);
  }
  ::SetEvent(shared_->wake.get());
}

DdeClient::Texts DdeClient::TakeTexts() {
  const std::lock_guard lock(shared_->mutex);
  return std::exchange(shared_->texts, {});
}

bool DdeClient::Connected() const {
  const std::lock_guard lock(shared_->mutex);
  return shared_->connected;
}

std::optional<steady_clock::time_point> DdeClient::LastHeard() const {
  const std::lock_guard lock(shared_->mutex);
  return shared_->last_heard;
}

}  // namespace kestrum
