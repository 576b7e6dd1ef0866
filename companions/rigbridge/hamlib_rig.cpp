#include "hamlib_rig.h"

#include <hamlib/rig.h>

#include <cstdlib>

#include "port_check.h"

namespace kestrum::rigbridge {
namespace {

constexpr double kHostPatienceS = 3;

struct HamlibMode {
  rmode_t mode;
  bool narrow;
};

HamlibMode ModeOf(sets::Mode mode) {
  switch (mode) {
    case sets::Mode::kLsb:
      return {RIG_MODE_LSB, false};
    case sets::Mode::kUsb:
      return {RIG_MODE_USB, false};
    case sets::Mode::kCw:
      return {RIG_MODE_CW, false};
    case sets::Mode::kCwn:
      return {RIG_MODE_CW, true};
    case sets::Mode::kCwr:
      return {RIG_MODE_CWR, false};
    case sets::Mode::kCwnr:
      return {RIG_MODE_CWR, true};
    case sets::Mode::kAm:
      return {RIG_MODE_AM, false};
    case sets::Mode::kAmn:
      return {RIG_MODE_AM, true};
    case sets::Mode::kFm:
      return {RIG_MODE_FM, false};
    case sets::Mode::kFmn:
      return {RIG_MODE_FM, true};
    case sets::Mode::kWfm:
      return {RIG_MODE_WFM, false};
    case sets::Mode::kDig:
      return {RIG_MODE_PKTUSB, false};
    case sets::Mode::kPkt:
      return {RIG_MODE_PKTFM, false};
  }
  return {RIG_MODE_NONE, false};
}

}  // namespace

Fault FaultOf(int hamlib_error, PortKind port) {
  const bool network = port == PortKind::kNetwork;
  switch (std::abs(hamlib_error)) {
    case RIG_EIO:
      return {"", network ? "The connection is lost: is the program still running?"
                          : "The connection to the rig is lost: is the cable plugged in?"};
    case RIG_ETIMEOUT:
      return {"", network ? "The program does not answer: is it one that speaks to Hamlib?"
                          : "The rig does not answer: is it switched on, and are model and speed right?"};
    case RIG_EPROTO:
    case RIG_ERJCTED:
    case RIG_ETRUNC:
      return {"", network ? "The program answers something else: is it one that speaks to Hamlib?"
                          : "The rig answers something else: are model and speed right?"};
    case RIG_ENAVAIL:
    case RIG_ENIMPL:
    case RIG_EDEPRECATED:
      return {"", "Hamlib reads no such meter of this rig."};
    case RIG_ECONF:
    case RIG_EINVAL:
      return {"", "Hamlib does not take these settings: are model, port and speed right?"};
    case RIG_EPOWER:
      return {"", "The rig is switched off."};
    default:
      return {"", "Hamlib fails with error " + std::to_string(std::abs(hamlib_error)) + "."};
  }
}

std::optional<Refusal> RefusalOf(int hamlib_error) {
  switch (std::abs(hamlib_error)) {
    case RIG_OK:
      return std::nullopt;
    case RIG_ENAVAIL:
    case RIG_ENIMPL:
    case RIG_EDEPRECATED:
      return Refusal{true, "its driver has no such command"};
    case RIG_EINVAL:
    case RIG_EDOM:
      return Refusal{false, "it is not made for that"};
    case RIG_EPROTO:
    case RIG_ERJCTED:
      return Refusal{false, "it said no"};
    case RIG_ETIMEOUT:
    case RIG_EIO:
      return Refusal{false, "it did not answer"};
    case RIG_EPOWER:
      return Refusal{false, "it is switched off"};
    default:
      return Refusal{false, "Hamlib fails with error " + std::to_string(std::abs(hamlib_error))};
  }
}

Outcome HamlibRig::Open(const BridgeSettings& settings) {
  Close();
  const RigModel* model = RigOf(rigs_, settings.model);
  if (model == nullptr)
    return Fault{"", "Hamlib knows no rig of the number " + std::to_string(settings.model) + "."};
  port_ = model->port;
  source_ = settings.meter.source;
  if (port_ == PortKind::kSerial) {
    if (const Outcome checked = CheckSerialPort(settings.device); !checked) return checked.fault();
  } else if (port_ == PortKind::kNetwork && !settings.device.empty()) {
    if (const Outcome checked = CheckHost(settings.device, kHostPatienceS); !checked) return checked.fault();
  }
  rig_ = rig_init(static_cast<rig_model_t>(settings.model));
  if (rig_ == nullptr) return Fault{"", "Hamlib cannot load its driver for " + model->FullName() + "."};
  const bool fits =
      (settings.device.empty() || port_ == PortKind::kNone || Configure("rig_pathname", settings.device)) &&
      (settings.speed == 0 || port_ != PortKind::kSerial ||
       Configure("serial_speed", std::to_string(settings.speed)));
  Configure("retry", "1");  // by itself it would try up to ten times, and tell nothing for so long
  const int result = fits ? rig_open(rig_) : -RIG_ECONF;
  is_open_ = result == RIG_OK;
  if (!is_open_) {
    Close();
    return FaultOf(result, port_);
  }
  if (port_ == PortKind::kSerial) watch_.emplace(settings.device);
  rig_set_cache_timeout_ms(rig_, HAMLIB_CACHE_ALL, 0);  // what the dial says now, not what was set last
  return Done{};
}

bool HamlibRig::Configure(const char* name, const std::string& value) {
  const token_t token = rig_token_lookup(rig_, name);
  return token != RIG_CONF_END && rig_set_conf(rig_, token, value.c_str()) == RIG_OK;
}

void HamlibRig::Close() {
  if (rig_ == nullptr) return;
  watch_.reset();
  if (is_open_) rig_close(rig_);
  rig_cleanup(rig_);
  rig_ = nullptr;
  is_open_ = false;
}

Result<double> HamlibRig::ReadMeter() {
  value_t value{};
  const setting_t level = source_ == MeterSource::kRaw ? RIG_LEVEL_RAWSTR : RIG_LEVEL_STRENGTH;
  const int result = rig_get_level(rig_, RIG_VFO_CURR, level, &value);
  if (result != RIG_OK) return FaultOf(result, port_);
  return static_cast<double>(value.i);
}

std::optional<double> HamlibRig::ReadFrequencyHz() {
  freq_t hz = 0;
  if (rig_get_freq(rig_, RIG_VFO_CURR, &hz) != RIG_OK || hz <= 0) return std::nullopt;
  return hz;
}

std::optional<Refusal> HamlibRig::SetFrequencyHz(double hz) {
  return RefusalOf(rig_set_freq(rig_, RIG_VFO_CURR, hz));
}

std::optional<Refusal> HamlibRig::SetMode(sets::Mode mode) {
  const HamlibMode wanted = ModeOf(mode);
  const pbwidth_t narrow = wanted.narrow ? rig_passband_narrow(rig_, wanted.mode) : 0;
  return RefusalOf(rig_set_mode(rig_, RIG_VFO_CURR, wanted.mode, narrow > 0 ? narrow : RIG_PASSBAND_NORMAL));
}

std::optional<Refusal> HamlibRig::SetLock(bool locked) {
  return RefusalOf(rig_set_func(rig_, RIG_VFO_CURR, RIG_FUNC_LOCK, locked ? 1 : 0));
}

std::optional<Refusal> HamlibRig::SetPower(bool on) {
  return RefusalOf(rig_set_powerstat(rig_, on ? RIG_POWER_ON : RIG_POWER_OFF));
}

}  // namespace kestrum::rigbridge
