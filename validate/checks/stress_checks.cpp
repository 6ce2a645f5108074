// validate/checks/stress_checks.cpp — the same frames where the application is at its worst.
#include "validate/checks/checks.h"
#include "validate/stage.h"

namespace validate {
namespace {

std::vector<std::optional<Pixels>> renderUnder(Trial& trial, const host::Stress& stress) {
  StageOptions options;
  options.host.stress = stress;
  Stage stage(trial, options);
  stage.setUp();
  std::vector<std::optional<Pixels>> pictures;
  stage.attempt("apply to a layer", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    for (const host::Depth depth : stage.claims().depths) {
      for (std::int32_t frame = 0; frame < options.layer.frames; ++frame) {
        pictures.push_back(stage.render(instance, frame, depth));
      }
    }
    trial.journal.step("save and open");
    host::Instance opened = host::Instance::open(stage.effect(), stage.layer(), instance.save());
    pictures.push_back(stage.render(opened, 1, stage.claims().depths.back()));
  });
  stage.close();
  return pictures;
}

void compare(Trial& trial, const host::Stress& stress) {
  const auto friendly = renderUnder(trial, {});
  const auto stressed = renderUnder(trial, stress);
  trial.journal.step("compare with a friendly application's pictures");
  std::size_t different = 0;
  for (std::size_t i = 0; i < friendly.size() && i < stressed.size(); ++i) {
    if (friendly[i] && stressed[i] && *friendly[i] != *stressed[i]) ++different;
  }
  if (different == 0) return;
  trial.journal.violate("differs-under-stress", std::to_string(different) + " of " +
                                                    std::to_string(friendly.size()) +
                                                    " frames are other pictures");
}

void movingMemory(Trial& trial) {
  host::Stress stress;
  stress.moveHandles = true;
  compare(trial, stress);
}

void poisonedMemory(Trial& trial) {
  host::Stress stress;
  stress.poisonMemory = true;
  compare(trial, stress);
}

void paddedRows(Trial& trial) {
  host::Stress stress;
  stress.rowPadding = 48;
  compare(trial, stress);
}

void oddOrigins(Trial& trial) {
  host::Stress stress;
  stress.originX = 3;
  stress.originY = 5;
  compare(trial, stress);
}

void shuffledRows(Trial& trial) {
  host::Stress stress;
  stress.shuffleRows = true;
  compare(trial, stress);
}

void withoutParams(Trial& trial) {
  host::Stress stress;
  stress.withoutParams = true;
  compare(trial, stress);
}

void allStress(Trial& trial) {
  host::Stress stress;
  stress.moveHandles = true;
  stress.poisonMemory = true;
  stress.rowPadding = 80;
  stress.originX = 7;
  stress.originY = 1;
  stress.shuffleRows = true;
  stress.withoutParams = true;
  compare(trial, stress);
}

}  // namespace

const Check kMovingMemory{"moving-memory",
                          "Handles may move and their old memory be spoiled whenever nothing locks "
                          "them.",
                          movingMemory};
const Check kPoisonedMemory{"poisoned-memory", "New memory and new images hold rubbish.",
                            poisonedMemory};
const Check kPaddedRows{"padded-rows", "Rows are longer than their pixels, and not aligned.",
                        paddedRows};
const Check kOddOrigins{
    "odd-origins", "The layer stands somewhere inside its buffers, which are larger.", oddOrigins};
const Check kShuffledRows{"shuffled-rows", "Iteration visits the rows in random order.",
                          shuffledRows};
const Check kWithoutParams{"without-params", "Commands about the sequence come without parameters.",
                           withoutParams};
const Check kAllStress{"all-stress", "All of these at the same time.", allStress};

}  // namespace validate
