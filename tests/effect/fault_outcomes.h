// tests/effect/fault_outcomes.h — how visits are to end when the host refuses a call.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace effect_test {

// Everything that may come of a refused call of this kind during this visit:
//   done       as without the fault
//   altered    success, and something else came of it: a frame that was not measured, a picture
//   that
//              was left as it was, a drawing that ended early
//   a number   the command's result; E: the error that the host gave
//   no data    the effect had nothing to save
//   host: ...  the host's own complaint about a value that the effect did not read
// Messages that the user sees because of the fault follow in quotes; "without data": the instance
// has lost its data.
std::vector<std::string> expectedOutcomes(std::string_view visit, std::string_view kind);

// What the host notes when it is in want itself, or on purpose gets what it should not.
bool isExpectedRemark(std::string_view text);

}  // namespace effect_test
