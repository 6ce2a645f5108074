// tests/cli/validate_command_test.cpp — judging a library from the command line.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/cli/program.h"
#include "tests/validate/odd_variant.h"

namespace cli::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;

class ValidateCommand : public testing::Test {
 protected:
  static Outcome judge(const char* name, std::vector<std::string> options) {
    const OddVariant variant(name);
    std::vector<std::string> arguments{"validate", VARILUM_ODD_EFFECT_PATH};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return varilum(arguments);
  }

  static std::vector<json> objects(const std::string& lines) {
    std::vector<json> all;
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);) all.push_back(json::parse(line));
    return all;
  }
};

TEST_F(ValidateCommand, EndsWith0WhenNothingIsViolated) {
  const Outcome outcome = judge("plain", {"--strictness", "3", "--seed", "5"});
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("nothing violated (--seed 5"));
  EXPECT_EQ(outcome.err, "");
}

TEST_F(ValidateCommand, EndsWith1AndExplainsAViolation) {
  const Outcome outcome = judge("leaks-handle", {"--strictness", "2"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.out, HasSubstr("error leaked-handle: not given back: 3 handles"));
  EXPECT_THAT(outcome.out, HasSubstr("Why it matters: "));
  EXPECT_THAT(outcome.out, HasSubstr("What to do: "));
  EXPECT_THAT(outcome.err, HasSubstr("1 violation."));
}

TEST_F(ValidateCommand, WritesOneObjectALine) {
  const Outcome outcome =
      judge("hangs", {"--only", "render-8", "--silence", "0.5", "--json", "--seed", "9"});
  EXPECT_EQ(outcome.code, 1);
  const std::vector<json> lines = objects(outcome.out);
  ASSERT_EQ(lines.size(), 3u) << outcome.out;
  EXPECT_EQ(lines[0]["event"], "start");
  EXPECT_EQ(lines[0]["seed"], 9);
  EXPECT_EQ(lines[1]["id"], "render-8");
  EXPECT_EQ(lines[1]["verdict"], "violated");
  EXPECT_EQ(lines[1]["findings"][0]["id"], "hung");
  EXPECT_FALSE(lines[1]["findings"][0]["advice"].get<std::string>().empty());
  EXPECT_EQ(lines[2]["violations"], 1);
}

TEST_F(ValidateCommand, ListsChecksWithoutALibrary) {
  const Outcome outcome = varilum({"validate", "--list"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_THAT(outcome.out, HasSubstr("Strictness 10: "));
  EXPECT_THAT(outcome.out, HasSubstr("every-refusal"));
}

TEST_F(ValidateCommand, EndsWith2OnWrongUsage) {
  EXPECT_EQ(varilum({"validate"}).code, 2);
  EXPECT_EQ(varilum({"validate", "/no/such/library.so"}).code, 2);
  EXPECT_EQ(judge("plain", {"--only", "no-such-check"}).code, 2);
  EXPECT_EQ(judge("plain", {"--strictness", "11"}).code, 2);
}

TEST_F(ValidateCommand, StopsOnRequest) {
  const OddVariant variant("hangs");
  const Outcome outcome =
      varilum({"validate", VARILUM_ODD_EFFECT_PATH, "--strictness", "3", "--json"},
              [](const std::string& out) {
                return out.find("\"apply\"") != std::string::npos ? SIGINT : 0;
              });
  EXPECT_EQ(outcome.code, 130) << outcome.err;
}

}  // namespace
}  // namespace cli::test
