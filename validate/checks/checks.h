// validate/checks/checks.h — every check by name; what each proves stands beside its code.
#pragma once

#include "validate/check.h"

namespace validate {

// loading_checks.cpp
extern const Check kLoad;
extern const Check kSetUp;
extern const Check kAbout;
// declaration_checks.cpp
extern const Check kDeclarations;
// sequence_checks.cpp
extern const Check kApply;
extern const Check kDynamicFlags;
// render_checks.cpp
extern const Check kRender8;
extern const Check kRender16;
extern const Check kRenderFloat;
extern const Check kRepeatable;
extern const Check kFillsOutput;
extern const Check kAnyOrder;
extern const Check kOddSizes;
// parameter_checks.cpp
extern const Check kExtremes;
extern const Check kKeyframes;
extern const Check kEdits;
extern const Check kRandomSettings;
// saving_checks.cpp
extern const Check kSaving;
extern const Check kTwoInstances;
// arbitrary_checks.cpp
extern const Check kArbitrary;
// panel_checks.cpp
extern const Check kPanel;
// thread_checks.cpp
extern const Check kUiBesideRender;
extern const Check kClones;
// host_checks.cpp
extern const Check kPremiere;
extern const Check kOtherHost;
extern const Check kHostVersions;
// stress_checks.cpp
extern const Check kMovingMemory;
extern const Check kPoisonedMemory;
extern const Check kPaddedRows;
extern const Check kOddOrigins;
extern const Check kShuffledRows;
extern const Check kWithoutParams;
extern const Check kAllStress;
// refusal_checks.cpp
extern const Check kSomeRefusals;
extern const Check kEveryRefusal;
// disorder_checks.cpp
extern const Check kOutOfOrder;
extern const Check kOddTimes;
// damage_checks.cpp
extern const Check kDamagedSequence;
extern const Check kDamagedArbitrary;

}  // namespace validate
