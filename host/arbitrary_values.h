// host/arbitrary_values.h — values that only the effect understands, through its own callbacks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

class EffectState;

// What the effect's callbacks ask of a parameter: its identity and the word it was declared with.
struct ArbitraryKind {
  EffectState* effect = nullptr;
  std::int16_t id = 0;
  void* refcon = nullptr;
};

// A value, disposed of by the effect (DISPOSE) when the last owner lets go. The handle may be null:
// the effect had no memory and said so only by giving none. Must not outlive its effect.
class ArbitraryValue {
 public:
  ArbitraryValue(const ArbitraryKind& kind, void** handle) : kind_(kind), handle_(handle) {}
  ~ArbitraryValue();
  ArbitraryValue(const ArbitraryValue&) = delete;
  ArbitraryValue& operator=(const ArbitraryValue&) = delete;

  const ArbitraryKind& kind() const noexcept { return kind_; }
  void** handle() const noexcept { return handle_; }
  // Takes over a handle that the effect put in place of this one.
  void adopt(void** handle) noexcept { handle_ = handle; }

 private:
  ArbitraryKind kind_;
  void** handle_;
};

using ArbitraryPtr = std::shared_ptr<ArbitraryValue>;

// [any thread, re-entrant] An error of the effect gives a value with a null handle, and is
// reported.
ArbitraryPtr copyArbitrary(const ArbitraryKind& kind, void** source);
ArbitraryPtr interpolateArbitrary(const ArbitraryKind& kind, void** left, void** right, double t);
ArbitraryPtr unflattenArbitrary(const ArbitraryKind& kind, const std::vector<std::byte>& flat);
std::vector<std::byte> flattenArbitrary(const ArbitraryKind& kind, void** value);
std::string printArbitrary(const ArbitraryKind& kind, void** value);
// Throws Error when the effect cannot read the text.
ArbitraryPtr scanArbitrary(const ArbitraryKind& kind, std::string_view text);
// One of PF_ArbCompare_*.
std::int32_t compareArbitrary(const ArbitraryKind& kind, void** a, void** b);

}  // namespace host
