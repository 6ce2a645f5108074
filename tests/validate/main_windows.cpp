// tests/validate/main_windows.cpp — the test program, which is also the process of each check.
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <string>
#include <string_view>

#include "validate/check_table.h"
#include "validate/child.h"

namespace {

// As runInChild() starts it: validate LIBRARY and pairs of an option and its value.
[[noreturn]] void runCheck(int count, char** words) {
  std::map<std::string_view, const char*> options;
  for (int i = 3; i + 1 < count; i += 2) options[words[i]] = words[i + 1];
  const validate::Check* check = validate::findCheck(options.at("--only"));
  if (check == nullptr) std::abort();
  const validate::Subject subject{words[2], std::strtoull(options.at("--seed"), nullptr, 10),
                                  std::atoi(options.at("--strictness"))};
  validate::runChild(*check, subject, std::strtoull(options.at("--channel"), nullptr, 10));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 2 && std::string_view(argv[1]) == "validate") runCheck(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
