#include "bus_service.h"

#include <string_view>

#include "common/reader_contract.h"

namespace kestrum::posdex {
namespace {

constexpr std::uint32_t kPrimaryOwner = 1;
constexpr std::uint32_t kExists = 3;
constexpr std::uint32_t kAlreadyOwner = 4;

int GiveText(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/, const char* property,
             sd_bus_message* reply, void* self, sd_bus_error* /*error*/) {
  const GpsTexts& texts = static_cast<const BusService*>(self)->Texts();
  QString text = QString::fromLatin1(reader::kTitle);
  for (const Item& item : kItems) {
    if (std::string_view(item.name) == property) text = texts.*item.text;
  }
  return sd_bus_message_append(reply, "s", text.toUtf8().constData());
}

int TakeQuit(sd_bus_message* call, void* self, sd_bus_error* /*error*/) {
  Q_EMIT static_cast<BusService*>(self)->QuitRequested();
  return sd_bus_reply_method_return(call, "");
}

// The object as the library wants it told: one row a member, to be alive as long as the line.
constexpr std::uint64_t kChanges = SD_BUS_VTABLE_PROPERTY_EMITS_CHANGE;
const sd_bus_vtable kObject[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY(reader::kTitleProperty, "s", GiveText, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY(reader::kItems[0], "s", GiveText, 0, kChanges),
    SD_BUS_PROPERTY(reader::kItems[1], "s", GiveText, 0, kChanges),
    SD_BUS_PROPERTY(reader::kItems[2], "s", GiveText, 0, kChanges),
    SD_BUS_PROPERTY(reader::kItems[3], "s", GiveText, 0, kChanges),
    SD_BUS_PROPERTY(reader::kItems[4], "s", GiveText, 0, kChanges),
    SD_BUS_PROPERTY(reader::kItems[5], "s", GiveText, 0, kChanges),
    SD_BUS_METHOD(reader::kQuit, "", "", TakeQuit, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_SIGNAL(reader::kHeartbeat, "", 0),
    SD_BUS_VTABLE_END,
};

}  // namespace

BusService::BusService(QObject* parent) : TextService(parent) {
  heartbeat_.setInterval(reader::kHeartbeatEvery);
  connect(&heartbeat_, &QTimer::timeout, this, &BusService::Beat);
  connect(&bus_, &SessionBus::StateChanged, this, &BusService::OnBus);
}

void BusService::OnBus(SessionBus::State state) {
  switch (state) {
    case SessionBus::State::kNoBus:
      heartbeat_.stop();
      if (owned_) retrying_ = QStringLiteral("the session bus has gone, retrying");
      owned_ = false;
      Q_EMIT StateChanged(retrying_);
      retrying_ = QStringLiteral("no session bus, retrying");
      break;
    case SessionBus::State::kConnecting:
      break;
    case SessionBus::State::kReady:
      Offer();
      break;
  }
}

void BusService::Offer() {
  const auto answer = [](sd_bus_message* reply, void* self, sd_bus_error*) {
    static_cast<BusService*>(self)->TakeNameReply(reply);
    return 0;
  };
  const bool asked =
      sd_bus_add_object_vtable(bus_.line(), nullptr, reader::kPath, reader::kService, kObject, this) >= 0 &&
      sd_bus_request_name_async(bus_.line(), nullptr, reader::kService, 0, answer, this) >= 0;
  if (!asked) Retry(QStringLiteral("the session bus refuses the name, retrying"));
}

void BusService::TakeNameReply(sd_bus_message* reply) {
  std::uint32_t answer = 0;
  if (sd_bus_message_is_method_error(reply, nullptr) != 0 || sd_bus_message_read(reply, "u", &answer) <= 0) {
    answer = 0;
  }
  owned_ = answer == kPrimaryOwner || answer == kAlreadyOwner;
  if (owned_) {
    owned_once_ = true;
    heartbeat_.start();
    Q_EMIT StateChanged(QStringLiteral("on the session bus"));
  } else if (answer == kExists && !owned_once_) {
    Q_EMIT NameTaken();
  } else if (answer == kExists) {
    Retry(QStringLiteral("another reader is on the session bus, retrying"));
  } else {
    Retry(QStringLiteral("the session bus refuses the name, retrying"));
  }
}

void BusService::Retry(const QString& state) {
  retrying_ = state;
  bus_.HangUp();
}

void BusService::Beat() {
  sd_bus_emit_signal(bus_.line(), reader::kPath, reader::kService, reader::kHeartbeat, "");
}

void BusService::SetTexts(const GpsTexts& texts) {
  std::array<char*, kItems.size() + 1> changed{};
  std::size_t count = 0;
  for (const Item& item : kItems) {
    // The library only reads the names.
    if (texts.*item.text != texts_.*item.text) changed.at(count++) = const_cast<char*>(item.name);
  }
  texts_ = texts;
  if (count == 0 || !owned_ || bus_.line() == nullptr) return;
  sd_bus_emit_properties_changed_strv(bus_.line(), reader::kPath, reader::kService, changed.data());
  heartbeat_.start();  // texts are a sign of life too: whoever listens is woken once, not twice
}

}  // namespace kestrum::posdex
