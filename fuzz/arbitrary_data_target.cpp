// fuzz/arbitrary_data_target.cpp — Luminance values as hosts and their projects hand them over.
//
// An input is a list of steps on a few values: a byte that says what and on which value, then what
// the step takes. Values end up in hosts' hands and come back, so every handle is of our making.
#include <array>
#include <cmath>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "fuzz/effect_under_test.h"
#include "host/arbitrary_values.h"
#include "host/command.h"
#include "host/effect_state.h"
#include "hostapi/arbitrary.h"

namespace fuzz {
namespace {

class Steps {
 public:
  Steps(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

  bool empty() const noexcept { return rest_.empty(); }
  unsigned byte() {
    const unsigned value = empty() ? 0U : rest_.front();
    if (!empty()) rest_ = rest_.subspan(1);
    return value;
  }
  // A length byte, and as many bytes of what is left.
  std::vector<std::byte> bytes() {
    const std::size_t count = std::min<std::size_t>(byte(), rest_.size());
    const auto head = std::as_bytes(rest_.first(count));
    rest_ = rest_.subspan(count);
    return {head.begin(), head.end()};
  }
  double number() {
    double value = 0.0;
    for (unsigned char* b = reinterpret_cast<unsigned char*>(&value);
         b < reinterpret_cast<unsigned char*>(&value + 1); ++b) {
      *b = static_cast<unsigned char>(byte());
    }
    return value;
  }

 private:
  std::span<const std::uint8_t> rest_;
};

class Values {
 public:
  explicit Values(host::EffectState& effect) : effect_(effect) {
    for (const host::ParameterDeclaration& declaration : effect.declarations) {
      if (declaration.definition.param_type != PF_Param_ARBITRARY_DATA) continue;
      kind_ = {&effect, declaration.definition.u.arb_d.id, declaration.definition.u.arb_d.refconPV};
    }
    if (kind_.effect == nullptr) breach("the effect has no arbitrary parameter");
    for (auto& value : values_) value = host::copyArbitrary(kind_, nullptr);
  }

  void step(Steps& steps) {
    const unsigned what = steps.byte();
    host::ArbitraryPtr& value = values_[what / 16 % values_.size()];
    const host::ArbitraryPtr& other = values_[steps.byte() % values_.size()];
    switch (what % 9) {
      case 0:
        value = host::unflattenArbitrary(kind_, steps.bytes());
        break;
      case 1:
        scan(value, steps.bytes());
        break;
      case 2:
        print(value, steps.byte(), static_cast<std::int32_t>(steps.byte() % 3));
        break;
      case 3:
        flatten(value, steps.byte());
        break;
      case 4:
        value = host::interpolateArbitrary(kind_, value->handle(), other->handle(), steps.number());
        break;
      case 5:
        compare(value, other);
        break;
      case 6:
        value = host::copyArbitrary(kind_, other->handle());
        break;
      case 7:
        roundTrip(value);
        break;
      default:
        unknown(steps.number(), static_cast<std::int32_t>(steps.byte()));
        break;
    }
  }

 private:
  std::int32_t send(PF_ArbParamsExtra& extra) {
    extra.id = kind_.id;
    host::Command command(effect_, nullptr, PF_Cmd_ARBITRARY_CALLBACK);
    return command.send(&extra);
  }

  // Texts come without a NUL of their own in what the host counts, and with one behind it.
  void scan(host::ArbitraryPtr& value, const std::vector<std::byte>& text) {
    attempt([&] {
      value = host::scanArbitrary(kind_, {reinterpret_cast<const char*>(text.data()), text.size()});
      if (!std::isfinite(numberOf(value))) breach("a text became no finite number");
    });
  }

  // A buffer of exactly the size announced, so that a byte too many is seen.
  void print(const host::ArbitraryPtr& value, unsigned size, std::int32_t flags) {
    std::vector<char> buffer(size, 'x');
    PF_ArbParamsExtra extra{};
    extra.which_function = PF_Arbitrary_PRINT_FUNC;
    extra.u.print_func_params = {kind_.refcon, flags, value->handle(), size,
                                 buffer.empty() ? nullptr : buffer.data()};
    if (send(extra) != 0 || value->handle() == nullptr || buffer.empty()) return;
    if (std::memchr(buffer.data(), 0, buffer.size()) == nullptr) breach("a text has no end");
  }

  void flatten(const host::ArbitraryPtr& value, unsigned size) {
    std::vector<std::byte> buffer(size);
    PF_ArbParamsExtra extra{};
    extra.which_function = PF_Arbitrary_FLATTEN_FUNC;
    extra.u.flatten_func_params = {kind_.refcon, value->handle(), size,
                                   buffer.empty() ? nullptr : buffer.data()};
    send(extra);
  }

  void compare(const host::ArbitraryPtr& a, const host::ArbitraryPtr& b) {
    const std::int32_t there = host::compareArbitrary(kind_, a->handle(), b->handle());
    const std::int32_t back = host::compareArbitrary(kind_, b->handle(), a->handle());
    const auto mirrored = [](std::int32_t answer) {
      if (answer == PF_ArbCompare_LESS) return PF_ArbCompare_MORE;
      if (answer == PF_ArbCompare_MORE) return PF_ArbCompare_LESS;
      return answer;
    };
    if (there != mirrored(back)) breach("values compare differently the other way round");
  }

  // What is saved comes back bit for bit.
  void roundTrip(const host::ArbitraryPtr& value) {
    if (value->handle() == nullptr) return;
    const std::vector<std::byte> flat = host::flattenArbitrary(kind_, value->handle());
    const host::ArbitraryPtr back = host::unflattenArbitrary(kind_, flat);
    if (flat.size() != sizeof(double)) breach("a value is not saved as one number");
    if (flat != host::flattenArbitrary(kind_, back->handle())) breach("a saved value changed");
    host::printArbitrary(kind_, value->handle());
  }

  double numberOf(const host::ArbitraryPtr& value) {
    const std::vector<std::byte> flat = host::flattenArbitrary(kind_, value->handle());
    double number = 0.0;
    if (flat.size() != sizeof number) breach("a value is not saved as one number");
    std::memcpy(&number, flat.data(), sizeof number);
    return number;
  }

  // Selectors that there are not, and refcons that are not ours, with nothing behind them.
  void unknown(double refcon, std::int32_t selector) {
    PF_ArbParamsExtra extra{};
    extra.which_function = selector;
    std::memcpy(&extra.u, &refcon, sizeof refcon);
    send(extra);
  }

  host::EffectState& effect_;
  host::ArbitraryKind kind_;
  std::array<host::ArbitraryPtr, 3> values_;
};

}  // namespace
}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Steps steps{data, size};
  fuzz::EffectUnderTest& test = fuzz::effectUnderTest(steps.byte());
  {
    fuzz::Values values{test.effect().state()};
    while (!steps.empty()) values.step(steps);
  }
  test.requireNothingLeft();
  return 0;
}
