// tests/effect/premiere_test.cpp — the effect in Premiere Pro: worker thread, pictures, versions.
#include <gtest/gtest.h>

#include <cstring>
#include <thread>

#include "host/error.h"
#include "tests/effect/reference_model.h"
#include "tests/effect/scene.h"

namespace effect_test {
namespace {

using host::Depth;
using host::Image;
using host::Instance;
using host::RenderPath;
using host::Role;

constexpr std::int32_t kWidth = 120;
constexpr std::int32_t kHeight = 80;
constexpr std::int32_t kFrames = 10;
constexpr FootageSize kSize{kWidth, kHeight, kFrames};
constexpr std::size_t kAnalysisComplete = 97;
constexpr std::size_t kRefreshPending = 100;
constexpr std::size_t kStatusText = 357;

using Lines = std::vector<std::pair<std::string, std::string>>;

std::string frameLine(int shown) {
  return std::to_string(shown) + " of 10 frames analyzed";
}

double storedLuminance(Instance& fx) {
  const host::SavedInstance saved = fx.save();
  double value = 0.0;
  for (const host::SavedParameter& parameter : saved.parameters) {
    if (parameter.name != "Luminance" || parameter.keys.empty()) continue;
    std::memcpy(&value, parameter.keys[0].opaque.data(), sizeof value);
  }
  return value;
}

TEST(Premiere, AnalyzesOnAThreadOfItsOwnBehindADialog) {
  TestFootage footage = flickeringFootage(kWidth, kHeight, kFrames, Depth::bits8);
  std::thread::id reader;
  class Watched : public host::FrameSource {
   public:
    Watched(TestFootage& itsFootage, std::thread::id& itsReader)
        : footage(itsFootage), reader(itsReader) {}
    const host::LayerInfo& info() const override { return footage.info(); }
    void read(std::int32_t frame, Image& image) override {
      reader = std::this_thread::get_id();
      footage.read(frame, image);
    }
    TestFootage& footage;
    std::thread::id& reader;
  } watched{footage, reader};

  Visit visit{Role::premiere};
  RecordingListener listener;
  visit.host().setListener(&listener);
  {
    Instance fx{visit.effect(), watched};
    listener.statusLines.clear();
    fx.press("Analyze");
    EXPECT_NE(reader, std::this_thread::get_id());
    EXPECT_NE(reader, std::thread::id{});

    const SavedData saved = savedData(fx);
    for (std::int32_t i = 0; i < kFrames; ++i) {
      const Levels expected =
          measure(footage.frame(i, Depth::bits8), {0, 0, kWidth, kHeight}, 1, false);
      EXPECT_EQ(saved.level(0, i), expected.luminance) << "frame " << i;
      EXPECT_TRUE(saved.analyzed(i));
    }
    EXPECT_EQ(saved.byteAt(kAnalysisComplete), 1);
    EXPECT_EQ(saved.byteAt(kRefreshPending), 0);
    EXPECT_STREQ(reinterpret_cast<const char*>(saved.bytes.data() + kStatusText),
                 "10 of 10 frames analyzed");
    EXPECT_EQ(fx.param("Needs Analyze").value(), 1.0);
    // Pressed at 128, and moved so that the host sees a change.
    EXPECT_EQ(storedLuminance(fx), 128.0 - 0.001);
  }

  // A text and a position are two reports; each shows both as they then stand.
  Lines lines{{"Varilum4 analyzing...", "Counting.."}, {"Varilum4 analyzing...", "Counting.."}};
  std::vector<std::pair<std::int32_t, std::int32_t>> steps{{0, 100}, {0, 100}};
  for (int done = 1; done <= kFrames; ++done) {
    lines.insert(lines.end(), 2, {"Varilum4 analyzing...", frameLine(done + 1)});
    steps.emplace_back((done - 1) * 10, 100);
    steps.emplace_back(done * 10, 100);
  }
  lines.insert(lines.end(), 2, {"Varilum4 analyzing...", "Done !!"});
  steps.insert(steps.end(), 2, {100, 100});
  EXPECT_EQ(listener.statusLines, lines);
  EXPECT_EQ(listener.steps, steps);
  EXPECT_EQ(listener.complaints(), "");
}

TEST(Premiere, KeepsTheFramesAnalyzedBeforeACancel) {
  Scene scene{kSize, Depth::bits8, Role::premiere};
  scene.listener.stopAtStep = 7;  // the text of the third frame
  EXPECT_THROW(scene.fx.press("Analyze"), host::Cancelled);
  const SavedData saved = savedData(scene.fx);
  for (std::int32_t i = 0; i < kFrames; ++i) EXPECT_EQ(saved.analyzed(i), i < 3) << i;
  EXPECT_EQ(saved.byteAt(kAnalysisComplete), 0);
  EXPECT_EQ(saved.byteAt(kRefreshPending), 0);
  // Targets are computed all the same: frames without a level have none.
  EXPECT_GT(saved.level(2, 0), 0.0);
  EXPECT_EQ(scene.listener.statusLines.back().second, "Termination Initiated..");
}

TEST(Premiere, AThrowingFrameSourceEndsTheRunAndReachesTheCaller) {
  class Broken : public TestFootage {
   public:
    using TestFootage::TestFootage;
    void read(std::int32_t frame, Image& image) override {
      if (frame == 4) throw host::Error("frame 4 is unreadable");
      TestFootage::read(frame, image);
    }
  };
  Broken footage{kWidth, kHeight, kFrames, Depth::bits8,
                 [](std::int32_t, std::int32_t, std::int32_t) -> Pixel {
                   return {1.0, 0.5, 0.5, 0.5};
                 }};
  Visit visit{Role::premiere};
  Instance fx{visit.effect(), footage};
  EXPECT_THROW(fx.press("Analyze"), host::Error);
  EXPECT_TRUE(savedData(fx).analyzed(3));
  EXPECT_FALSE(savedData(fx).analyzed(4));
}

std::vector<Image> pictures(Role role, RenderPath path, int method) {
  Scene scene{kSize, Depth::bits8, role};
  std::vector<Image> images;
  scene.fx.param("Correction method").set(method);
  scene.analyzeSmoothing(2);
  for (std::int32_t i = 0; i < kFrames; ++i) {
    scene.fx.render(i, Depth::bits8, images.emplace_back(), path);
  }
  return images;
}

TEST(Premiere, GivesThePictureOfAfterEffects) {
  for (const int method : {1, 2, 3}) {
    const auto here = pictures(Role::premiere, RenderPath::classic, method);
    for (const RenderPath path : {RenderPath::classic, RenderPath::smart}) {
      const auto there = pictures(Role::afterEffects, path, method);
      for (std::size_t i = 0; i < here.size(); ++i) {
        SCOPED_TRACE(testing::Message() << "method " << method << " frame " << i);
        expectSame(here[i], there[i]);
      }
    }
  }
}

TEST(Premiere, RendersAgainWhatWasSaved) {
  Scene scene{kSize, Depth::bits8, Role::premiere};
  scene.fx.press("Analyze");
  Instance again = Instance::open(scene.visit.effect(), scene.footage, scene.fx.save());
  for (std::int32_t i = 0; i < kFrames; ++i) {
    Image first;
    Image second;
    scene.fx.render(i, Depth::bits8, first, RenderPath::classic);
    again.render(i, Depth::bits8, second, RenderPath::classic);
    SCOPED_TRACE(i);
    expectSame(first, second);
  }
}

TEST(AnyOtherHost, IsServedWithoutAnalysis) {
  Scene scene{kSize, Depth::bits8, Role::other};
  scene.fx.press("Analyze");
  EXPECT_TRUE(scene.listener.steps.empty());
  EXPECT_FALSE(savedData(scene.fx).analyzed(0));
  EXPECT_EQ(scene.fx.param("Needs Analyze").value(), 1.0);
}

constexpr const char* kTooOld =
    "Varilum4 plugin requires After Effects or Premiere Pro CC 2015\nPlease use Varilum3 instead";

struct Gate {
  host::ApiVersion version;
  bool accepted;
};

class AfterEffectsVersion : public ::testing::TestWithParam<Gate> {};

TEST_P(AfterEffectsVersion, IsTakenOrRefused) {
  const Gate gate = GetParam();
  host::Host application{Role::afterEffects, gate.version};
  if (gate.accepted) {
    EXPECT_NO_THROW(host::Effect(application, effectModule()));
  } else {
    try {
      host::Effect refused{application, effectModule()};
      ADD_FAILURE() << "accepted";
    } catch (const host::CommandError& error) {
      EXPECT_EQ(error.result(), -1);
      EXPECT_NE(std::string(error.what()).find(kTooOld), std::string::npos) << error.what();
    }
  }
  EXPECT_TRUE(application.outstanding().nothing()) << application.outstanding().describe();
}

INSTANTIATE_TEST_SUITE_P(All, AfterEffectsVersion,
                         ::testing::Values(Gate{{13, 8}, false}, Gate{{13, 9}, true},
                                           Gate{{13, 14}, true}, Gate{{13, 15}, true},
                                           Gate{{14, 0}, false}, Gate{{12, 15}, false}));

TEST(Premiere, BelowNineAnswersControlsWithAMessage) {
  for (const std::uint32_t major : {8u, 9u}) {
    host::HostOptions options;
    options.appInfo[0] = major;
    Scene scene{{kWidth, kHeight, 3}, Depth::bits8, Role::premiere, options, {13, 4}};
    const std::size_t before = scene.listener.shown().size();
    scene.fx.press("Analyze");
    const bool old = major < 9;
    ASSERT_EQ(scene.listener.shown().size() - before, old ? 1u : 0u) << major;
    EXPECT_EQ(savedData(scene.fx).analyzed(0), !old);
    if (!old) continue;
    EXPECT_EQ(scene.listener.shown().back().caption, "Varilum4");
    EXPECT_EQ(scene.listener.shown().back().text,
              "Varilum4 plugin requires Premiere Pro or After Effects CC 2015\n"
              "Please use Varilum3 instead");
    EXPECT_EQ(scene.fx.param("Needs Analyze").value(), 0.0);
  }
}

}  // namespace
}  // namespace effect_test
