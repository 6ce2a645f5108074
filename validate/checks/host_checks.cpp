// validate/checks/host_checks.cpp — other applications, and other versions of them.
#include "host/error.h"
#include "validate/checks/checks.h"
#include "validate/stage.h"

namespace validate {
namespace {

// A visit as every application makes it. A refusal at the start is the effect's right.
void visit(Trial& trial, const StageOptions& options, const std::string& application) {
  constexpr const char* kRule = "other-application";
  Stage stage(trial, options);
  trial.journal.step("start in " + application);
  try {
    stage.setUp();
  } catch (const CannotStart& refusal) {
    stage.close();
    throw Skipped("the effect refuses " + application + ": " + refusal.what());
  }
  stage.attempt(
      "apply to a layer in " + application,
      [&] {
        host::Instance instance(stage.effect(), stage.layer());
        for (std::int32_t frame = 0; frame < stage.layer().info().frameCount; ++frame) {
          stage.render(instance, frame, host::Depth::bits8, kRule);
        }
        trial.journal.step("save and open in " + application);
        host::Instance opened =
            host::Instance::open(stage.effect(), stage.layer(), instance.save());
        stage.render(opened, 0, host::Depth::bits8, kRule);
      },
      kRule);
  stage.close();
}

void premiere(Trial& trial) {
  StageOptions options;
  options.role = host::Role::premiere;
  options.version = {13, 4};
  visit(trial, options, "an editing application (plain renders, 8 bits, shared sequence data)");
}

void otherHost(Trial& trial) {
  StageOptions options;
  options.role = host::Role::other;
  visit(trial, options, "an application with an unknown identifier");
}

void hostVersions(Trial& trial) {
  constexpr host::ApiVersion kVersions[] = {{13, 0}, {13, 4}, {13, 8}, {13, 28}, {14, 0}, {12, 5}};
  int accepted = 0;
  for (const host::ApiVersion version : kVersions) {
    StageOptions options;
    options.version = version;
    const std::string name =
        "a host of version " + std::to_string(version.major) + "." + std::to_string(version.minor);
    try {
      visit(trial, options, name);
      ++accepted;
    } catch (const Skipped&) {
      continue;  // refusing a version is the effect's right
    }
  }
  if (accepted == 0) throw Skipped("the effect refuses all of these versions");
}

}  // namespace

const Check kPremiere{"editing-application",
                      "The effect works, or refuses, in an application with plain renders, 8 bits "
                      "and no copies of sequence data.",
                      premiere};
const Check kOtherHost{"unknown-application",
                       "The effect works, or refuses, in an application that it does not know.",
                       otherHost};
const Check kHostVersions{"host-versions",
                          "The effect works, or refuses, in older and newer applications.",
                          hostVersions};

}  // namespace validate
