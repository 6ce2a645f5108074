// tests/cli/session_test.cpp — whole visits of an editor, replayed through the program.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/cli/panel_expectation.h"
#include "tests/cli/program.h"
#include "tests/cli/scratch_folder.h"
#include "tests/cli/striped_clip.h"

namespace cli::test {
namespace {

using nlohmann::json;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

const std::vector<double> kGains{1.0, 0.8, 1.1, 0.9, 1.2, 0.7, 1.0, 0.95};

class Session : public testing::Test {
 protected:
  void SetUp() override { writeLossless(in_, flickering(kGains)); }

  // The answers, one a command. All must be well unless `code` says otherwise.
  std::vector<json> replay(const std::vector<std::string>& commands, int code = 0) {
    const std::string script = folder_ / "visit.txt";
    std::ofstream file(script);
    for (const std::string& command : commands) file << command << "\n";
    file.close();
    const Outcome outcome = varilum({"session", script});
    EXPECT_EQ(outcome.code, code) << outcome.err;
    std::vector<json> answers;
    std::istringstream lines(outcome.out);
    for (std::string line; std::getline(lines, line);) answers.push_back(json::parse(line));
    EXPECT_EQ(answers.size(), commands.size());
    for (const json& answer : answers) {
      if (code == 0) {
        EXPECT_TRUE(answer.at("ok").get<bool>()) << answer.dump();
      }
      EXPECT_FALSE(answer.contains("messages")) << answer.dump();
    }
    return answers;
  }

  std::string open() const { return "open " + in_; }

  static json parameter(const json& answer, const std::string& name) {
    for (const json& row : answer.at("parameters")) {
      if (row.at("name") == name) return row;
    }
    ADD_FAILURE() << "no parameter " << name;
    return {};
  }
  static json button(const json& answer, const std::string& text) {
    for (const json& row : answer.at("parameters")) {
      if (row.value("text", "") == text) return row;
    }
    ADD_FAILURE() << "no button " << text;
    return {};
  }

  ScratchFolder folder_;
  std::string in_ = folder_ / clip("in");
};

// Every step's drawing, mark by mark, against one worked out from the clip's own numbers.
TEST_F(Session, EachStepsDrawingIsAsWorkedOut) {
  PanelExpectation panel(flickering(kGains));
  std::vector<std::string> commands{open(), R"(set "Deflicker method" 1)"};
  std::vector<std::pair<std::size_t, json>> expected;  // answer, marks
  const auto draw = [&] {
    expected.emplace_back(commands.size(), panel.marks());
    commands.push_back("draw marks");
  };
  commands.push_back("press Analyze");
  panel.analyzed(128.0);
  draw();
  commands.push_back("goto 5");
  panel.frame = 5;
  draw();
  // The handle is at 128: 9 + 128 * 337 / 255 = 178. Nine pixels further right stand for 128 + 9 *
  // 255 / 337 = 134.8, so 135.
  commands.push_back("down 178 155");
  draw();
  commands.push_back("drag 187 155");
  commands.push_back("drag 187 155");
  panel.desire(135.0);
  draw();
  commands.push_back("up 187 155");
  draw();
  commands.push_back("set \"Zoom luminance scale\" on");
  panel.zoom = true;
  draw();
  commands.push_back("set \"Show green histogram\" on");
  panel.green = true;
  draw();
  commands.push_back("cursor 20");
  panel.frame = 20;
  draw();
  commands.push_back("cursor -1");
  panel.frame = -1;
  draw();
  commands.push_back("goto 0");
  panel.frame = 0;
  draw();
  const auto answers = replay(commands);
  for (const auto& [index, marks] : expected) {
    SCOPED_TRACE(commands[index - 1]);
    const json& drawn = answers.at(index).at("marks");
    ASSERT_EQ(drawn.size(), marks.size()) << drawn.dump(1);
    for (std::size_t i = 0; i < marks.size(); ++i) {
      EXPECT_EQ(difference(drawn[i], marks[i]), "") << "mark " << i << ": " << drawn[i].dump();
    }
  }
}

TEST_F(Session, AHalfDoneAnalysisCanBeFinished) {
  const auto answers = replay({open(), "parameters", "press Analyze stop=3", "parameters", "draw",
                               "press Analyze", "parameters", "draw"});
  EXPECT_EQ(answers[0]["analyzed"], 0);
  EXPECT_TRUE(answers[2]["stopped"].get<bool>());
  EXPECT_EQ(answers[2]["analyzed"], 3);
  EXPECT_FALSE(answers[2]["complete"].get<bool>());
  EXPECT_EQ(answers[5]["analyzed"], 8);
  EXPECT_TRUE(answers[5]["complete"].get<bool>());
  // The labels tell how far it got.
  EXPECT_THAT(button(answers[3], "Clear").at("label").get<std::string>(), HasSubstr("3 of 8"));
  EXPECT_THAT(button(answers[6], "Clear").at("label").get<std::string>(), HasSubstr("8 of 8"));
  EXPECT_NE(button(answers[1], "Analyze").at("label"), button(answers[6], "Analyze").at("label"));
}

TEST_F(Session, ADraggedLevelIsWhatIsRendered) {
  const auto answers = replay({open(), R"(set "Deflicker method" 1)", "press Analyze", "goto 3",
                               "draw", "down 178 155", "drag 140 155", "up 140 155",
                               "get Luminance", "render 3", "render 5", "render 3 bits=16"});
  EXPECT_TRUE(answers[5]["dragging"].get<bool>());
  EXPECT_THAT(answers[6]["changed"], Contains("Luminance"));
  EXPECT_THAT(answers[7]["changed"], Contains("Counter")) << "counted once, at the end";
  EXPECT_THAT(answers[6]["changed"], testing::Not(Contains("Counter")));
  // 128 - 38 * 255 / 337 = 99.2.
  EXPECT_EQ(answers[8]["value"], "99.00 ");
  EXPECT_NEAR(answers[9]["level"].get<double>(), 99.0, 0.6);
  EXPECT_NEAR(answers[10]["level"].get<double>(), 99.0, 0.6);
  EXPECT_NEAR(answers[11]["level"].get<double>(), 99.0, 0.6);
}

TEST_F(Session, KeyframesByMouseRenderSaveAndReopen) {
  const std::string project = folder_ / "shot.varilum";
  const auto answers = replay({open(),
                               R"(set "Deflicker method" 1)",
                               "press Analyze",
                               "key Luminance 0 80",
                               "goto 4",
                               "draw",
                               "down 178 155",
                               "drag 161 155",
                               "up 161 155",
                               "get Luminance 0",
                               "get Luminance 2",
                               "get Luminance 4",
                               "render 2",
                               "save " + project,
                               "close",
                               "open " + project,
                               "get Luminance 2",
                               "render 2",
                               "draw",
                               "render 4"});
  EXPECT_EQ(answers[9]["keyframes"], 2);
  EXPECT_EQ(answers[9]["value"], "80.00 ");
  // 152 of 337 pixels stand for 115.0; brighter, the frame's brightest stripe would clip.
  const double key = std::stod(answers[11]["value"].get<std::string>());
  EXPECT_EQ(key, std::floor(key)) << "whole levels";
  EXPECT_NEAR(std::stod(answers[10]["value"].get<std::string>()), (80 + key) / 2, 0.01);
  EXPECT_NEAR(answers[12]["level"].get<double>(), (80 + key) / 2, 0.6);
  EXPECT_EQ(answers[16]["value"], answers[10]["value"]);
  EXPECT_EQ(answers[17]["crc"], answers[12]["crc"]);
  EXPECT_NEAR(answers[19]["level"].get<double>(), key, 0.6);
}

TEST_F(Session, TheInputMarkerTakesLevelAndSpreadOver) {
  // Frame 4's stripes are 24, 72, 120 and 216: mean 108, mean distance 60.
  const auto answers =
      replay({open(), "set \"Correction method\" 2", "press Analyze", "goto 4", "draw",
              "click 151 146", "get Luminance", "get \"Shift spread\"", "draw"});
  EXPECT_THAT(answers[4]["texts"], Contains("Input = 108.00, spread = 60.00 "));
  EXPECT_THAT(answers[5]["changed"], ElementsAre("Luminance", "Shift spread"));
  EXPECT_EQ(answers[6]["value"], "108.00");
  EXPECT_EQ(answers[7]["value"], 60.0);
}

TEST_F(Session, UndoBringsValuesBack) {
  const auto answers =
      replay({open(), "set \"Number of smoothing frames\" 4", "press Analyze", "render 2", "draw",
              "set \"Number of smoothing frames\" 12", "undo", "get \"Number of smoothing frames\"",
              "render 2", "down 120 155", "up 120 155", "undo", "undo", "undo",
              "get \"Number of smoothing frames\""});
  EXPECT_EQ(answers[7]["value"], 4.0);
  EXPECT_EQ(answers[8]["crc"], answers[3]["crc"]);
  // The click, the analysis and the first edit.
  EXPECT_EQ(answers[14]["value"], 30.0);
}

TEST_F(Session, FramesAreNotThereAtOnce) {
  const auto answers = replay({open(), "goto 2", "draw once", "draw once"});
  EXPECT_TRUE(answers[2]["waiting"].get<bool>());
  EXPECT_THAT(answers[2]["texts"], Contains("Calculating histogram..."));
  EXPECT_FALSE(answers[3]["waiting"].get<bool>());
  EXPECT_THAT(answers[3]["texts"], Contains("4096 of 4096 pixels analyzed"));
}

TEST_F(Session, AScrolledPanelIsStillHit) {
  const auto answers =
      replay({open(), R"(set "Deflicker method" 1)", "press Analyze", "draw", "scroll 30 -50",
              "draw marks", "down 208 105", "up 218 105", "get Luminance"});
  EXPECT_EQ(answers[5]["marks"][0]["rect"], json({30, -50, 400, 332}));
  EXPECT_TRUE(answers[6]["dragging"].get<bool>());
  // 179 pixels right of the plot's edge at 39: 179 * 255 / 337 = 135.4.
  EXPECT_EQ(answers[8]["value"], "135.00");
}

TEST_F(Session, MistakesAreAnsweredAndTheVisitGoesOn) {
  const auto answers = replay({"draw", open(), "frobnicate", "set Speed", "set Nonsense 3",
                               "goto 99", "drag 1 1", "set \"Show red histogram\" maybe",
                               "open nowhere.mkv", "\"open", "info", open(), "info", "quit"},
                              1);
  for (const std::size_t wrong : std::vector<std::size_t>{0, 2, 3, 4, 5, 6, 7, 8, 9, 10}) {
    EXPECT_FALSE(answers[wrong]["ok"].get<bool>()) << wrong;
    EXPECT_FALSE(answers[wrong]["error"].get<std::string>().empty());
  }
  EXPECT_THAT(answers[3]["error"].get<std::string>(), HasSubstr("set PARAMETER VALUE"));
  EXPECT_TRUE(answers[12]["ok"].get<bool>());
  EXPECT_EQ(answers[12]["frames"], 8);
}

// Numbers name parameters; this one is beyond what 32 bits hold.
TEST_F(Session, AParameterNumberBeyondAllIsAMistake) {
  const auto answers = replay({open(), "set 21474836477 40", "info", "quit"}, 1);
  EXPECT_FALSE(answers[1]["ok"].get<bool>());
  EXPECT_THAT(answers[1]["error"].get<std::string>(), HasSubstr("21474836477"));
  EXPECT_TRUE(answers[2]["ok"].get<bool>());
}

TEST_F(Session, PicturesAreWritten) {
  if (kPlainProgram) GTEST_SKIP() << "nothing is drawn here";
  const std::string picture = folder_ / "panel.png";
  replay({open(), "press Analyze", "draw png=" + picture + " scale=2"});
  std::ifstream file(picture, std::ios::binary);
  std::string head(24, '\0');
  file.read(head.data(), 24);
  EXPECT_EQ(head.substr(1, 3), "PNG");
  // The size stands in big-endian words.
  const auto byte = [&](std::size_t at) {
    return static_cast<int>(static_cast<unsigned char>(head[at]));
  };
  const auto word = [&](std::size_t at) { return byte(at + 2) * 256 + byte(at + 3); };
  EXPECT_EQ(word(16), 2 * (560 + 12));
  EXPECT_EQ(word(20), 2 * (332 + 12));
}

}  // namespace
}  // namespace cli::test
