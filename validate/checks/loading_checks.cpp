// validate/checks/loading_checks.cpp — from the file to an effect that is set up.
#include "host/effect_state.h"
#include "host/error.h"
#include "validate/checks/checks.h"
#include "validate/stage.h"

namespace validate {
namespace {

constexpr std::size_t kLongestName = 31;

void load(Trial& trial) {
  Stage stage(trial);
  const auto& list = stage.module().properties();
  if (!list) {
    return trial.journal.violate("no-property-list", "the library comes without a property list");
  }
  struct Text {
    const char* what;
    const std::string& value;
  };
  const Text texts[] = {
      {"name", list->name}, {"category", list->category}, {"match name", list->matchName}};
  for (const Text& text : texts) {
    if (!text.value.empty() && text.value.size() <= kLongestName) continue;
    trial.journal.violate("property-list", std::string("the ") + text.what + " has " +
                                               std::to_string(text.value.size()) + " characters");
  }
}

void setUp(Trial& trial) {
  Stage stage(trial);
  stage.setUp();
  stage.close();
}

// Applications list their effects' texts without using any of them.
void about(Trial& trial) {
  Stage stage(trial);
  stage.setUp();
  std::string text;
  if (stage.attempt("ABOUT", [&] { text = stage.effect().about(); }) && text.empty()) {
    trial.journal.step("ABOUT");
    trial.journal.violate("silent-error", "ABOUT gave no text");
  }
  stage.close();
}

}  // namespace

const Check kLoad{"load", "The library opens, and has an entry point and a sound property list.",
                  load};
const Check kSetUp{
    "set-up",
    "GLOBAL_SETUP, PARAMS_SETUP and GLOBAL_SETDOWN succeed and leave nothing behind; "
    "flags and version are those of the property list.",
    setUp};
const Check kAbout{"about", "ABOUT gives a text.", about};

}  // namespace validate
