// validate/check_table.cpp — all checks, and the strictness from which each is made.
#include "validate/check_table.h"

#include "validate/checks/checks.h"

namespace validate {
namespace {

constexpr const char* kThemes[kStrictest] = {
    "loading and setting up",
    "declarations, applying and removing",
    "8-bit frames",
    "every depth, dynamic flags, frames in any order",
    "parameters, saving and opening",
    "the panel, arbitrary data, random settings",
    "threads, other applications and their versions",
    "memory and images as real applications have them at worst",
    "the first refused calls of each kind, odd sizes",
    "every refused call, commands out of order, odd times, damaged data",
};

constexpr TableRow kTable[] = {
    {1, true, &kLoad},
    {1, true, &kSetUp},
    {2, false, &kDeclarations},
    {2, false, &kAbout},
    {2, true, &kApply},
    {3, false, &kRender8},
    {3, false, &kRepeatable},
    {3, false, &kFillsOutput},
    {4, false, &kRender16},
    {4, false, &kRenderFloat},
    {4, false, &kAnyOrder},
    {4, false, &kDynamicFlags},
    {5, false, &kExtremes},
    {5, false, &kKeyframes},
    {5, false, &kEdits},
    {5, false, &kSaving},
    {6, false, &kPanel},
    {6, false, &kArbitrary},
    {6, false, &kRandomSettings},
    {6, false, &kTwoInstances},
    {7, false, &kUiBesideRender},
    {7, false, &kClones},
    {7, false, &kPremiere},
    {7, false, &kOtherHost},
    {7, false, &kHostVersions},
    {8, false, &kMovingMemory},
    {8, false, &kPoisonedMemory},
    {8, false, &kPaddedRows},
    {8, false, &kOddOrigins},
    {8, false, &kShuffledRows},
    {8, false, &kWithoutParams},
    {8, false, &kAllStress},
    {9, false, &kOddSizes},
    {9, false, &kSomeRefusals},
    {10, false, &kEveryRefusal},
    {10, false, &kOutOfOrder},
    {10, false, &kOddTimes},
    {10, false, &kDamagedSequence},
    {10, false, &kDamagedArbitrary},
};

}  // namespace

std::span<const TableRow> allChecks() noexcept {
  return kTable;
}

const Check* findCheck(std::string_view id) noexcept {
  for (const TableRow& row : kTable) {
    if (id == row.check->id) return row.check;
  }
  return nullptr;
}

const char* themeOf(int strictness) noexcept {
  return strictness >= kLaxest && strictness <= kStrictest ? kThemes[strictness - 1] : "";
}

}  // namespace validate
