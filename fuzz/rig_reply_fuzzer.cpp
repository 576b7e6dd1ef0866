#include <algorithm>
#include <array>

#include "support/fuzz.h"
#include "support/scripted_car.h"

// The first character names the rig ("1" to "5", others stand for rigs that do not exist), the second, when
// it is "v", pulls the adapter out half-way. Then come replies with "|" between them, one a cycle.
namespace kestrum::fuzz {
namespace {

constexpr std::array<std::string_view, 4> kComments = {"Done", "Comport not open !", "Nothing rx-ed!",
                                                       "Wrong CatCmd rx-ed!"};

// What a reply means, read from the rigs' manuals once more.
int Meaning(int rig_model, const std::string& reply) {
  const auto byte = [&reply](std::size_t n) {
    return n < reply.size() ? static_cast<int>(static_cast<unsigned char>(reply[n])) : 0;
  };
  switch (rig_model) {
    case kFT840:
      return byte(4) == 0xF7 ? byte(0) : 0;
    case kFT847:
      return byte(4) == 0xE7 ? std::min(byte(0) % 32 * 32, 255) : 0;
    default:
      return byte(4) == 0 ? byte(0) % 16 * 16 : 0;
  }
}

void CheckCycle(const test::ScriptedCar& car) {
  const Form1& form = car.form1;
  const int raw = car.app.state.RssiRaw;
  Require(raw >= 0 && raw <= 255, "RssiRaw is a raw value", std::to_string(raw));
  const std::string& comment = form.lblCatComment.caption;
  Require(std::find(kComments.begin(), kComments.end(), comment) != kComments.end(), "a known comment",
          comment);
  Require(form.ProgressBar1.value == raw, "the bar shows the reading");
  Require(form.lblFieldStrenght.caption.ends_with(" uV"), "the field strength has its unit",
          form.lblFieldStrenght.caption);
}

void CheckEcho(const std::string& echo) {
  Require(echo.starts_with("RX Cmd= "), "the echo of a read", echo);
  Require(std::count(echo.begin(), echo.end(), ',') == 4 && echo.ends_with("]"), "five bytes in the echo",
          echo);
  Require(MadeOf(echo.substr(8), "0123456789, []"), "the echo is decimal", echo);
}

}  // namespace
}  // namespace kestrum::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kestrum;
  using namespace kestrum::fuzz;
  const std::string text = Text(data, size);
  if (text.size() < 2) return 0;
  Settings settings = test::ScriptedCar::UsualSettings();
  settings.RigModel = text[0] - '0';
  const bool vanishes = text[1] == 'v';
  const bool exists = settings.RigModel >= kFT817 && settings.RigModel <= kFT897;

  test::ScriptedCar car;
  car.WriteConfig(settings, "&On");
  car.Start();
  const auto replies = Pieces(text.substr(2), 40);
  for (std::size_t i = 0; i < replies.size(); ++i) {
    if (vanishes && i == replies.size() / 2) car.world.serial.Vanish();
    const bool open = car.world.serial.IsOpen();
    car.world.serial.replies = {replies[i]};
    car.form1.tmrMain.tick();
    if (!exists) continue;
    CheckCycle(car);
    if (!open) {
      Require(car.settings.RigModel == kFT847 || car.app.state.RssiRaw == 0, "no port, no reading");
      continue;
    }
    CheckEcho(car.form1.lblCatCmd.caption);
    const int expected = Meaning(car.settings.RigModel, replies[i]);
    Require(car.app.state.RssiRaw == expected, "what the reply means", std::to_string(expected));
  }
  return 0;
}
