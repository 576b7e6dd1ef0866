#pragma once

#include <string>
#include <utility>
#include <variant>

// How everything that can fail says so, in the program and in its companions. The standard library alone.
namespace kestrum {

// What failed, and why.
struct Fault {
  std::string what;    // the file, device or line of text concerned; empty where the caller knows it
  std::string reason;  // the system's, in its words, or a sentence of ours

  bool operator==(const Fault&) const = default;
};

// A value, or why there is none.
template <typename Value>
class [[nodiscard]] Result {
 public:
  Result(Value value) : state_(std::move(value)) {}
  Result(Fault fault) : state_(std::move(fault)) {}

  bool ok() const { return std::holds_alternative<Value>(state_); }
  explicit operator bool() const { return ok(); }

  // Only of a result that is ok.
  const Value& value() const& { return *std::get_if<Value>(&state_); }
  Value&& value() && { return std::move(*std::get_if<Value>(&state_)); }
  // Only of one that is not.
  const Fault& fault() const { return *std::get_if<Fault>(&state_); }

 private:
  std::variant<Value, Fault> state_;
};

// Of a deed that hands nothing over but that it is done.
struct Done {};
using Outcome = Result<Done>;

}  // namespace kestrum
