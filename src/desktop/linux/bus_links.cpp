#include "desktop/linux/bus_links.h"

#include <poll.h>

#include <string_view>
#include <utility>

#include "common/reader_contract.h"
#include "desktop/text_convert.h"

namespace kestrum {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kTitleWait{150};
constexpr milliseconds kQuitWait{50};
// A reader that does not answer the question for its texts within this time is asked again when it speaks.
constexpr std::uint64_t kAnswerLimitUs = 5'000'000;

constexpr const char* kProperties = "org.freedesktop.DBus.Properties";
constexpr const char* kBus = "org.freedesktop.DBus";

}  // namespace

BusLinks::BusLinks() {
  deliver_.setSingleShot(true);
  deliver_.setInterval(0);
  connect(&deliver_, &QTimer::timeout, this, &BusLinks::Deliver);
  connect(&bus_, &SessionBus::StateChanged, this, &BusLinks::OnState);
}

// The close message has a moment to leave.
BusLinks::~BusLinks() {
  const auto all_sent = [this] {
    return bus_.line() == nullptr || (sd_bus_get_events(bus_.line()) & POLLOUT) == 0;
  };
  if (quit_sent_) bus_.WaitFor(all_sent, kQuitWait);
}

void BusLinks::OnState(SessionBus::State state) {
  Forget();
  if (state == SessionBus::State::kReady) {
    Subscribe();
    FetchAll();
  } else if (state == SessionBus::State::kNoBus) {
    known_ = true;
  }
}

void BusLinks::Forget() {
  owner_.clear();
  title_.clear();
  last_heard_.reset();
  fetches_ = 0;
  known_ = false;
}

void BusLinks::Subscribe() {
  const auto change = [](sd_bus_message* signal, void* self, sd_bus_error*) {
    static_cast<BusLinks*>(self)->TakeChange(signal);
    return 0;
  };
  const auto heartbeat = [](sd_bus_message* signal, void* self, sd_bus_error*) {
    auto* const links = static_cast<BusLinks*>(self);
    if (links->IsReader(signal)) links->last_heard_ = steady_clock::now();
    return 0;
  };
  const auto owner = [](sd_bus_message* signal, void* self, sd_bus_error*) {
    static_cast<BusLinks*>(self)->TakeOwner(signal);
    return 0;
  };
  sd_bus* const line = bus_.line();
  sd_bus_match_signal_async(line, nullptr, reader::kService, reader::kPath, kProperties, "PropertiesChanged",
                            change, nullptr, this);
  sd_bus_match_signal_async(line, nullptr, reader::kService, reader::kPath, reader::kService,
                            reader::kHeartbeat, heartbeat, nullptr, this);
  const std::string changes_of_owner =
      std::string("type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',arg0='") +
      reader::kService + "'";
  sd_bus_add_match_async(line, nullptr, changes_of_owner.c_str(), owner, nullptr, this);
}

void BusLinks::FetchAll() {
  sd_bus_message* question = nullptr;
  sd_bus* const line = bus_.line();
  if (sd_bus_message_new_method_call(line, &question, reader::kService, reader::kPath, kProperties,
                                     "GetAll") < 0) {
    return;
  }
  const auto answer = [](sd_bus_message* reply, void* self, sd_bus_error*) {
    static_cast<BusLinks*>(self)->TakeAll(reply);
    return 0;
  };
  sd_bus_message_set_auto_start(question, 0);
  sd_bus_message_append(question, "s", reader::kService);
  if (sd_bus_call_async(line, nullptr, question, answer, this, kAnswerLimitUs) >= 0) ++fetches_;
  sd_bus_message_unref(question);
}

void BusLinks::TakeAll(sd_bus_message* reply) {
  --fetches_;
  known_ = true;
  Texts texts;
  if (sd_bus_message_is_method_error(reply, nullptr) != 0 || !ReadTexts(reply, texts)) return;
  owner_ = sd_bus_message_get_sender(reply);
  title_ = texts[reader::kTitleProperty];
  last_heard_ = steady_clock::now();
  Gather(texts);
}

bool BusLinks::IsReader(sd_bus_message* message) const {
  const char* const sender = sd_bus_message_get_sender(message);
  return sender != nullptr && owner_ == sender;
}

void BusLinks::TakeChange(sd_bus_message* signal) {
  if (!IsReader(signal)) {
    // Perhaps a new reader whose name has not been announced yet; the bus knows who it is.
    if (fetches_ == 0) FetchAll();
    return;
  }
  const char* interface = nullptr;
  Texts texts;
  if (sd_bus_message_read(signal, "s", &interface) <= 0 || std::string_view(interface) != reader::kService ||
      !ReadTexts(signal, texts)) {
    return;
  }
  last_heard_ = steady_clock::now();
  Gather(texts);
  // Items that have changed without their texts.
  if (sd_bus_message_enter_container(signal, SD_BUS_TYPE_ARRAY, "s") > 0 &&
      sd_bus_message_at_end(signal, 0) == 0 && fetches_ == 0) {
    FetchAll();
  }
}

void BusLinks::TakeOwner(sd_bus_message* signal) {
  const char* name = nullptr;
  const char* old_owner = nullptr;
  const char* new_owner = nullptr;
  if (sd_bus_message_read(signal, "sss", &name, &old_owner, &new_owner) <= 0) return;
  owner_ = new_owner;
  title_.clear();
  last_heard_ = steady_clock::now();
  if (!owner_.empty()) FetchAll();
}

void BusLinks::Gather(const Texts& texts) {
  for (const auto& [item, text] : texts) {
    if (links_.contains(item)) arrived_[item] = text;
  }
  if (!arrived_.empty() && !deliver_.isActive()) deliver_.start();
}

// However many signals have come, each item is handed over once, with its newest text.
void BusLinks::Deliver() {
  enter([this, texts = std::exchange(arrived_, {})] {
    for (const auto& [item, text] : texts) {
      const auto link = links_.find(item);
      if (link == links_.end()) continue;
      // A copy: the handler may end the link.
      const auto on_text = link->second;
      on_text(FromQt(QString::fromStdString(text)));
    }
  });
}

void BusLinks::LinkAutomatic(const std::string& topic, const std::string& item,
                             std::function<void(const std::string&)> on_text) {
  // Only the reader is linked to; any other server is one that never comes.
  if (topic != reader::kTopic) return;
  links_[item] = std::move(on_text);
  bus_.Start();
  if (bus_.line() != nullptr && fetches_ == 0) FetchAll();
}

void BusLinks::Unlink(const std::string& topic, const std::string& item) {
  if (topic == reader::kTopic) links_.erase(item);
}

bool BusLinks::ServerPresent(const std::string& topic) const {
  return topic == reader::kTopic && !owner_.empty();
}

std::optional<milliseconds> BusLinks::SilentFor(const std::string& topic) const {
  if (!ServerPresent(topic) || !last_heard_) return std::nullopt;
  return std::chrono::duration_cast<milliseconds>(steady_clock::now() - *last_heard_);
}

bool BusLinks::Exists(const std::string& title) {
  if (!asked_) {
    bus_.Start();
    bus_.WaitFor([this] { return known_; }, kTitleWait);
  }
  asked_ = true;
  if (!title_.empty()) return title_ == title;
  return title == reader::kTitle && started_.Runs();
}

void BusLinks::Close(const std::string& title) {
  if (!title_.empty()) {
    if (bus_.line() == nullptr || title_ != title) return;
    sd_bus_message* quit = nullptr;
    if (sd_bus_message_new_method_call(bus_.line(), &quit, reader::kService, reader::kPath, reader::kService,
                                       reader::kQuit) < 0) {
      return;
    }
    sd_bus_message_set_auto_start(quit, 0);
    sd_bus_message_set_expect_reply(quit, 0);
    quit_sent_ = sd_bus_send(bus_.line(), quit, nullptr) >= 0;
    sd_bus_message_unref(quit);
  } else if (title == reader::kTitle) {
    started_.AskToEnd();
  }
}

void BusLinks::Started(const std::string& name, qint64 process) {
  if (name.find("Posdex") != std::string::npos) started_.Follow(process);
}

}  // namespace kestrum
