// fuzz/effect_under_test.h — the effect's library in a host that ends the run at the first breach.
#pragma once

#include <string_view>

#include "host/effect.h"
#include "host/error.h"
#include "host/host.h"
#include "host/listener.h"

namespace fuzz {

// Says what is wrong and ends the program, so that libFuzzer keeps the input.
[[noreturn]] void breach(std::string_view what);

// A host with the effect set up in it, kept from input to input.
class EffectUnderTest {
 public:
  explicit EffectUnderTest(host::Role role, host::Stress stress = {});

  host::Host& host() noexcept { return host_; }
  host::Effect& effect() noexcept { return effect_; }

  // Asks that the last input left nothing outstanding.
  void requireNothingLeft();

 private:
  class Judge;
  host::Host host_;
  host::Effect effect_;
  host::Outstanding atRest_;
};

// One of a few hosts: friendly, as unkind as the interface allows, and the Premiere role.
EffectUnderTest& effectUnderTest(unsigned choice);

// Does it; a refusal that the host reports as an error is an answer like any other.
template <class Act>
void attempt(Act act) {
  try {
    act();
  } catch (const host::Error&) {
  }
}

}  // namespace fuzz
