// validate/check_table.h — all checks, and the strictness from which each is made.
#pragma once

#include <span>
#include <string_view>

#include "validate/check.h"

namespace validate {

struct TableRow {
  int strictness;  // made at this and above
  bool gate;       // when the effect cannot even do this, nothing after it is tried
  const Check* check;
};

/// By strictness.
std::span<const TableRow> allChecks() noexcept;

/// Null when there is none of this name.
const Check* findCheck(std::string_view id) noexcept;

/// What a strictness adds to the one before: a few words. 1..10.
const char* themeOf(int strictness) noexcept;

}  // namespace validate
