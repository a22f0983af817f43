/// Which deployment of the agent tool is used.
#pragma once

#include <string>
#include <utility>
#include <variant>

#include "corvane/export.h"
#include "corvane/platform/foundation/match.h"

namespace corvane {

/// A deployment: one of the two public ones, or an address of the shop's own.
class Region : public SumType<Region> {
 public:
  /// A base address of the shop's own.
  struct Custom {
    std::string url;
    bool operator==(const Custom&) const = default;
  };
  /// The European deployment.
  struct Eu {
    bool operator==(const Eu&) const = default;
  };
  /// The global deployment.
  struct Global {
    bool operator==(const Global&) const = default;
  };
  using Value = std::variant<Custom, Eu, Global>;

  /// The page at this base address. Its query is replaced; its path and fragment stay.
  static Region custom(std::string url) { return Region(Custom{std::move(url)}); }
  static Region eu() { return Region(Eu{}); }
  static Region global() { return Region(Global{}); }

  [[nodiscard]] const Value& value() const CORVANE_LIFETIMEBOUND { return value_; }

  /// The same deployment; custom addresses are compared letter by letter.
  bool operator==(const Region&) const = default;

 private:
  explicit Region(Value value) : value_(std::move(value)) {}

  Value value_;
};

}  // namespace corvane
