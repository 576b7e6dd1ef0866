#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

// What the signal has been a moment ago and in the last minutes.
namespace kestrum {

class SignalHistory {
 public:
  using Time = std::chrono::milliseconds;  // of Clock::Elapsed

  static constexpr std::size_t kColumns = 300;  // seconds
  static constexpr int kNothing = -1;

  // A reading, or nothing when the set did not answer. Readings that lie at most `longest_gap` apart count as
  // one line.
  void Add(Time now, std::optional<int> raw, Time longest_gap);

  // The highest raw value of the last 2 s; kNothing when there was no reading.
  int Peak(Time now) const;

  // One column a second up to now, oldest first: the highest raw value, kNothing where none was measured.
  std::vector<std::int16_t> Columns(Time now) const;
  // Rises whenever a column gets another value.
  unsigned changes() const { return changes_; }

 private:
  struct Point {
    Time time{0};
    int raw = kNothing;
  };
  void Put(std::int64_t second, int raw);

  std::vector<std::int16_t> ring_ = std::vector<std::int16_t>(kColumns, kNothing);
  std::int64_t newest_ = -1;  // second that was written last
  unsigned changes_ = 0;
  std::vector<Point> recent_;  // the last 2 s
  std::optional<Point> last_;
};

}  // namespace kestrum
