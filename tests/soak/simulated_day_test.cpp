#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <random>

#include "support/scripted_car.h"

namespace {

std::atomic<long long> live_allocations{0};

}  // namespace

void* operator new(std::size_t size) {
  ++live_allocations;
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  if (memory != nullptr) --live_allocations;
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  operator delete(memory);
}

namespace kestrum::test {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;

constexpr int kCycleMs = 1050;  // interval 1000 ms and the reply window of 50 ms

// A day on the road with everything that goes wrong, drawn from a fixed seed.
class LongDay {
 public:
  LongDay() {
    car.WriteConfig(ScriptedCar::UsualSettings());
    car.world.serial.answer = [this](const std::string&) { return Reply(); };
    car.world.files.forget_appends = true;
    car.Start({.start_logging = true});
  }

  ScriptedCar car;
  int expected_messages = 0;

  void Cycle(int number) {
    // Twenty minutes of a full disk every six hours: whatever falls due then is lost, and told once a block.
    const int second = number * kCycleMs / 1000;
    const bool disk_full = second % 21600 > 20000 && second % 21600 <= 21200;
    car.world.files.write_fault = disk_full ? "No space left on device" : "";
    const bool block_due = car.app.log.LogCount == 99;
    if (disk_full && block_due) ++expected_messages;
    MoveGps();
    // The adapter falls out twice an hour; the driver puts it back and chooses the port again.
    if (number % 1700 == 900) car.world.serial.Vanish();
    if (number % 1700 == 950) car.form1.mnuCom1.click();
    // Without a port there is no reply to wait for.
    car.RunFor(milliseconds(car.world.serial.IsOpen() ? kCycleMs : 1000));
  }

  void ForgetRecordings() {
    car.world.serial.written.clear();
    car.world.serial.events.clear();
    car.world.clock.sleeps_ms.clear();
    messages += static_cast<int>(car.world.dialogs.messages.size());
    car.world.dialogs.messages.clear();
  }
  int messages = 0;

 private:
  int Draw(int highest) { return static_cast<int>(random_() % static_cast<unsigned>(highest + 1)); }

  std::string Reply() {
    const int value = Draw(255);
    switch (Draw(19)) {
      case 0:
        return {};
      case 1:
        return Bytes({value});
      case 2:
        return Bytes({value, value, value, value, 0});
      case 3:
        return std::string(5000, static_cast<char>(value));
      case 4:
        return Bytes({value, value, value, value, 0xF7, value, value});
      default:
        return Bytes({value, value, value, value, 0xF7});
    }
  }

  void MoveGps() {
    const int kind = Draw(49);
    if (kind == 0) {
      car.SendGps("", "", "V", "", "", "");
    } else if (kind == 1) {
      car.SendGps("99.99.99", std::string(300, '9'), "A", "-1e9", "x", "32768");
    } else if (kind > 3) {  // else the link is silent and the texts stay
      car.SendGps("51" + std::to_string(50 + Draw(9)) + ".25N", "0053" + std::to_string(Draw(9)) + ".50E",
                  "A", std::to_string(Draw(300)), std::to_string(Draw(70)), std::to_string(Draw(359)));
    }
  }

  std::mt19937 random_{20260517};
};

TEST(SimulatedDay, TwentyFourHoursLoseNothingAndGrowNothing) {
  LongDay day;
  constexpr int kCycles = 24 * 3600 * 1000 / kCycleMs;
  static_assert(kCycles == 82285);
  long long after_first_hour = 0;
  for (int number = 0; number < kCycles; ++number) {
    day.Cycle(number);
    const bool hour_is_full = (number + 1) % (3600 * 1000 / kCycleMs) == 0;
    if (!hour_is_full) continue;
    day.ForgetRecordings();
    if (after_first_hour == 0) after_first_hour = live_allocations;
  }
  day.ForgetRecordings();
  // Strings of changing length may or may not need memory of their own, so a few more or less are no growth.
  EXPECT_NEAR(static_cast<double>(live_allocations), static_cast<double>(after_first_hour), 200);

  const int blocks_due = kCycles / 100;
  EXPECT_EQ(day.car.app.log.LogCount, kCycles % 100);
  EXPECT_EQ(day.car.world.files.appends, blocks_due);
  EXPECT_GT(day.expected_messages, 40);
  EXPECT_EQ(day.messages, day.expected_messages);
  const auto written_blocks = static_cast<std::size_t>(blocks_due - day.expected_messages);
  EXPECT_EQ(day.car.world.files.appended_lines, written_blocks * 103);

  day.car.world.files.write_fault.clear();
  day.car.app.ExitApp();
  EXPECT_EQ(day.car.world.files.appended_lines, written_blocks * 103 + 3 + kCycles % 100);
  EXPECT_EQ(day.car.world.dialogs.messages.size(), 0U);
}

// The same with averaging and logging by distance, which share the rig between two timers and wait for fixes.
TEST(SimulatedDay, AnHourOfAveragingByDistanceKeepsItsOrder) {
  LongDay day;
  day.car.settings.AverageRSSI = true;
  day.car.app.forms.form4.Option2.click();
  day.car.app.forms.form4.cmdOk.click();
  for (int number = 0; number < 3600; ++number) day.Cycle(number);
  EXPECT_GT(day.car.app.log.LogCount + day.car.world.files.appends * 100, 1000);
  EXPECT_LE(day.car.app.log.LogCount, 99);
  EXPECT_TRUE(day.car.form1.tmrMain.enabled);
  EXPECT_FALSE(day.car.world.program.Ended());
}

}  // namespace
}  // namespace kestrum::test
