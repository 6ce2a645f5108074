// validate/checks/damage_checks.cpp — saved data that was cut short or damaged.
#include "host/arbitrary_values.h"
#include "host/error.h"
#include "host/instance_state.h"
#include "validate/checks/checks.h"
#include "validate/stage.h"

namespace validate {
namespace {

using Bytes = std::vector<std::byte>;
constexpr int kDamageRounds = 200;

// Cut, lengthened, or with some bytes changed.
Bytes damaged(const Bytes& whole, std::mt19937_64& random) {
  Bytes bytes = whole;
  switch (random() % 4) {
    case 0:
      bytes.resize(random() % (bytes.size() + 1));
      break;
    case 1:
      bytes.resize(bytes.size() + random() % 64, std::byte{0xFF});
      break;
    default:
      for (std::uint64_t i = 0, count = 1 + random() % 8; i < count && !bytes.empty(); ++i) {
        constexpr std::byte kLikely[] = {std::byte{0}, std::byte{0xFF}, std::byte{0x7F},
                                         std::byte{0x80}};
        const std::uint64_t at = random() % bytes.size();
        bytes[at] = random() % 2 == 0 ? kLikely[random() % 4] : static_cast<std::byte>(random());
      }
  }
  return bytes;
}

void damagedSequence(Trial& trial) {
  Stage stage(trial);
  stage.setUp();
  host::SavedInstance saved;
  stage.attempt("apply, press every button, and save", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    for (const std::int32_t index : stage.claims().buttons) instance.state().press(index);
    saved = instance.save();
  });
  if (saved.sequenceData.empty()) throw Skipped("the effect saves no sequence data");
  for (int round = 0; round < kDamageRounds; ++round) {
    host::SavedInstance spoiled = saved;
    spoiled.sequenceData = damaged(saved.sequenceData, trial.random);
    stage.tolerate("open damaged data, variant " + std::to_string(round), [&] {
      host::Instance instance = host::Instance::open(stage.effect(), stage.layer(), spoiled);
      host::Image image;
      instance.render(1, host::Depth::bits8, image, stage.claims().path);
      instance.save();
    });
  }
  stage.close();
}

std::string anyText(std::mt19937_64& random) {
  constexpr std::string_view kLikely = "0123456789.,-+eE \t{}[]()\"'%snx";
  std::string text;
  for (std::uint64_t i = 0, count = random() % 40; i < count; ++i) {
    text += kLikely[random() % kLikely.size()];
  }
  return text;
}

void damagedArbitrary(Trial& trial) {
  Stage stage(trial);
  stage.setUp();
  if (stage.claims().arbitrary.empty()) throw Skipped("the effect has no arbitrary data");
  stage.forgive({"arbitrary-copy"});  // refusing is fair
  stage.attempt("apply to a layer", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    host::InstanceState& state = instance.state();
    for (const std::int32_t index : stage.claims().arbitrary) {
      const host::ArbitraryKind kind = state.ui.params.kindOf(index);
      const host::Value value = state.ui.params.at(index, {0, stage.layer().info().timeScale});
      const Bytes flat = host::flattenArbitrary(kind, value.opaque->handle());
      for (int round = 0; round < kDamageRounds; ++round) {
        const std::string variant = ", variant " + std::to_string(round);
        stage.tolerate("UNFLATTEN damaged data" + variant,
                       [&] { host::unflattenArbitrary(kind, damaged(flat, trial.random)); });
        stage.tolerate("SCAN any text" + variant,
                       [&] { host::scanArbitrary(kind, anyText(trial.random)); });
      }
    }
  });
  stage.close();
}

}  // namespace

const Check kDamagedSequence{"damaged-saved-data",
                             "Saved data that is cut short or changed is opened or refused.",
                             damagedSequence};
const Check kDamagedArbitrary{"damaged-arbitrary-data",
                              "Arbitrary data and texts that are damaged are read or refused.",
                              damagedArbitrary};

}  // namespace validate
