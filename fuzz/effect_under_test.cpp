// fuzz/effect_under_test.cpp — the effect's library in a host that ends the run at the first
// breach.
#include "fuzz/effect_under_test.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace fuzz {
namespace {

const host::EffectModule& module() {
  static const host::EffectModule loaded{VARILUM_EFFECT_PATH};
  return loaded;
}

host::HostOptions optionsWith(const host::Stress& stress) {
  host::HostOptions options;
  options.threads = 1;
  options.stress = stress;
  return options;
}

}  // namespace

void breach(std::string_view what) {
  std::fprintf(stderr, "breach: %.*s\n", static_cast<int>(what.size()), what.data());
  std::abort();
}

// A value that the host could not read back is a fair answer to a hostile one; all else is not.
class EffectUnderTest::Judge final : public host::Listener {
 public:
  void message(host::MessageKind kind, std::string_view, std::string_view text) override {
    if (kind != host::MessageKind::protocol) return;
    if (text.starts_with("the effect could not make an arbitrary value")) return;
    breach(text);
  }
};

EffectUnderTest::EffectUnderTest(host::Role role, host::Stress stress)
    : host_(role, {}, optionsWith(stress)), effect_(host_, module()) {
  static Judge judge;
  host_.setListener(&judge);
  atRest_ = host_.outstanding();
}

void EffectUnderTest::requireNothingLeft() {
  const host::Outstanding now = host_.outstanding();
  if (now != atRest_) breach("left over: " + now.describe() + "; before: " + atRest_.describe());
}

EffectUnderTest& effectUnderTest(unsigned choice) {
  constexpr host::Stress kUnkind{.moveHandles = true,
                                 .poisonMemory = true,
                                 .rowPadding = 12,
                                 .originX = 3,
                                 .originY = 2,
                                 .shuffleRows = true,
                                 .withoutParams = true};
  static const std::array<std::unique_ptr<EffectUnderTest>, 3> all{
      std::make_unique<EffectUnderTest>(host::Role::afterEffects),
      std::make_unique<EffectUnderTest>(host::Role::afterEffects, kUnkind),
      std::make_unique<EffectUnderTest>(host::Role::premiere)};
  return *all[choice % all.size()];
}

}  // namespace fuzz
