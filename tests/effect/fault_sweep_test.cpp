// tests/effect/fault_sweep_test.cpp — every call that a host may refuse, refused, at every place.
//
// Each visit is counted first, and then made again for every call of every kind and every error
// that the host may give. VARILUM_SWEEP=full does all of it; otherwise a share is drawn, and
// VARILUM_SWEEP_SEED repeats a draw.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <map>
#include <random>
#include <set>

#include "host/error.h"
#include "host/instance_state.h"
#include "tests/effect/fault_kinds.h"
#include "tests/effect/fault_outcomes.h"
#include "tests/effect/fault_visits.h"

namespace effect_test {
namespace {

constexpr std::size_t kShare = 60;  // faults of one visit, when not all are made

struct Fault {
  const FaultKind* kind;
  std::uint64_t call;  // 1-based
  std::int32_t error;
};

std::string describe(const Fault& fault) {
  const std::string error =
      fault.error == host::kGivesNothing ? "nothing" : std::to_string(fault.error);
  return std::string(fault.kind->name) + " call " + std::to_string(fault.call) + " gives " + error;
}

// How a visit goes without faults.
struct Rehearsal {
  std::string seen;
  std::vector<std::string> messages;
};

std::vector<std::string> messagesOf(const RecordingListener& listener) {
  std::vector<std::string> messages;
  for (const auto& message : listener.shown()) messages.push_back(message.text);
  return messages;
}

// Acts, and tells how that ended; fault_outcomes.h has the words.
std::string outcomeOf(const FaultVisit& visit, Scene& scene, std::int32_t error,
                      const Rehearsal& usual) {
  scene.listener.forget();
  scene.seen.clear();
  std::string outcome;
  const auto result = [&](std::int32_t code) {
    outcome = code == error ? "E" : code == 0 ? "no data" : std::to_string(code);
  };
  try {
    visit.act(scene);
    outcome = scene.seen == usual.seen ? "done" : "altered";
  } catch (const host::CommandError& failure) {
    result(failure.result());
  } catch (const host::Cancelled&) {
    result(PF_Interrupt_CANCEL);
  } catch (const host::Error& failure) {
    outcome = std::string("host: ") + failure.what();
  }
  scene.app.faults().disarm();
  for (const std::string& message : messagesOf(scene.listener)) {
    if (std::ranges::count(usual.messages, message) > 0) continue;
    outcome += " \"" + message.substr(0, message.find_first_of("\r\n")) + "\"";
  }
  if (scene.fx && scene.fx->state().ui.sequenceData == nullptr) outcome += " without data";
  for (const auto& text : scene.listener.texts(host::MessageKind::protocol)) {
    if (!isExpectedRemark(text)) outcome += " [" + text + "]";
  }
  return outcome;
}

bool sweepsAll() {
  const char* const asked = std::getenv("VARILUM_SWEEP");
  return asked != nullptr && std::string(asked) == "full";
}

std::uint32_t sweepSeed() {
  static const std::uint32_t seed = [] {
    const char* const given = std::getenv("VARILUM_SWEEP_SEED");
    return given != nullptr ? static_cast<std::uint32_t>(std::stoul(given))
                            : std::random_device{}();
  }();
  return seed;
}

// All faults, or every k-th from a random one on.
std::vector<Fault> chosen(std::vector<Fault> all) {
  if (sweepsAll() || all.size() <= kShare) return all;
  const std::size_t step = (all.size() + kShare - 1) / kShare;
  std::mt19937 random{sweepSeed()};
  std::vector<Fault> some;
  for (std::size_t i = random() % step; i < all.size(); i += step) some.push_back(all[i]);
  return some;
}

class FaultSweep : public ::testing::TestWithParam<FaultVisit> {
 protected:
  // Calls of every kind are counted meanwhile.
  Rehearsal rehearse(Scene& scene) {
    visit_.prepare(scene);
    host::Faults& faults = scene.app.faults();
    faults.resetCounts();
    faults.arm(host::CallKind::newHandle, std::uint64_t{1} << 60, 0);
    scene.listener.forget();
    scene.seen.clear();
    visit_.act(scene);
    faults.disarm();
    return {scene.seen, messagesOf(scene.listener)};
  }

  std::vector<Fault> faultsOf(const host::Faults& counted) const {
    std::vector<Fault> all;
    for (const FaultKind& kind : faultKinds()) {
      for (std::uint64_t call = 1; call <= counted.calls(kind.kind); ++call) {
        for (const std::int32_t error : kind.errors) all.push_back({&kind, call, error});
      }
    }
    return all;
  }

  const FaultVisit visit_ = GetParam();
};

TEST_P(FaultSweep, EndsAsItShouldAndLeavesNothingBehind) {
  Scene scene{visit_.role, visit_.stress};
  // The picture to compare with is made before the first fault, and leaves nothing in the way.
  scene.makeReady();
  scene.fx.reset();
  const Rehearsal usual = rehearse(scene);
  const std::vector<Fault> all = faultsOf(scene.app.faults());
  ASSERT_FALSE(all.empty());
  const std::vector<Fault> faults = chosen(all);
  std::map<std::string, std::set<std::string>> seen;
  std::map<std::string, std::uint64_t> made;
  std::uint64_t unmet = 0;
  for (const Fault& fault : faults) {
    SCOPED_TRACE(describe(fault) + ", seed " + std::to_string(sweepSeed()));
    visit_.prepare(scene);
    scene.app.faults().resetCounts();
    scene.app.faults().arm(fault.kind->kind, fault.call, fault.error);
    const std::string outcome = outcomeOf(visit_, scene, fault.error, usual);
    if (scene.app.faults().injected() == 0) ++unmet;
    ++made[fault.kind->name];
    seen[fault.kind->name].insert(outcome);
    EXPECT_THAT(expectedOutcomes(visit_.name, fault.kind->name), ::testing::Contains(outcome));
    EXPECT_EQ(scene.tryOut(), "") << "after " << outcome;
    scene.panel.reset();
    scene.fx.reset();
    ASSERT_EQ(scene.app.outstanding().describe(), "nothing");
  }
  EXPECT_EQ(unmet, 0u);
  if (sweepsAll()) {
    for (const auto& [kind, outcomes] : seen) {
      EXPECT_THAT(outcomes,
                  ::testing::UnorderedElementsAreArray(expectedOutcomes(visit_.name, kind)))
          << kind;
    }
  }
  std::cout << visit_.name << ": " << faults.size() << " of " << all.size() << " faults";
  if (faults.size() < all.size()) std::cout << ", seed " << sweepSeed();
  std::cout << "\n";
  for (const auto& [kind, count] : made) {
    std::cout << "  " << kind << " " << count << ":";
    for (const std::string& outcome : seen[kind]) std::cout << " {" << outcome << "}";
    std::cout << "\n";
  }
}

INSTANTIATE_TEST_SUITE_P(Visits, FaultSweep, ::testing::ValuesIn(faultVisits()),
                         [](const auto& visit) { return std::string(visit.param.name); });

}  // namespace
}  // namespace effect_test
