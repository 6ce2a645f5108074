// tests/windows/dialog_analysis_test.cpp — a whole analysis behind the effect's real window,
// pressed by a user.
#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>

#include "platform/cup_dialog.h"
#include "tests/effect/test_footage.h"
#include "tests/host/recording_listener.h"
#include "tests/windows/screenshot.h"

namespace effect_test {
namespace {

using varilum::CUPDialog;

constexpr std::int32_t kFrames = 10;
constexpr std::int32_t kPause = 6;  // the frame at which the footage waits for the user
constexpr std::size_t kAnalysisComplete = 97;
constexpr DWORD kMostWait = 20000;

// Footage whose frame kPause takes until the user has done something.
class WaitingFootage : public TestFootage {
 public:
  WaitingFootage() : TestFootage(flickeringFootage(160, 120, kFrames, host::Depth::bits8)) {}

  void read(std::int32_t frame, host::Image& image) override {
    if (frame == kPause) {
      reached.store(true);
      for (DWORD waited = 0; !go.load() && waited < kMostWait; waited += 5) Sleep(5);
    }
    TestFootage::read(frame, image);
  }

  std::atomic<bool> reached{false};
  std::atomic<bool> go{false};
};

bool waitFor(const std::function<bool()>& condition) {
  for (DWORD waited = 0; waited < kMostWait; waited += 10) {
    if (condition()) return true;
    Sleep(10);
  }
  return false;
}

HWND shownDialog() {
  HWND window = nullptr;
  waitFor([&] {
    window = FindWindowA("#32770", "Varilum4 analyzing...");
    return window != nullptr && IsWindowVisible(window) != 0;
  });
  return window;
}

std::string statusOf(HWND window) {
  char text[256] = {};
  SendDlgItemMessageA(window, CUPDialog::statusLine, WM_GETTEXT, sizeof text,
                      reinterpret_cast<LPARAM>(text));
  return text;
}

// What the user does while the analysis waits at frame kPause, on a thread of its own.
using User = std::function<void(HWND window, WaitingFootage& footage)>;

SavedData analyzeBehindTheWindow(const User& user) {
  WaitingFootage footage;
  host::HostOptions options;
  options.showsEffectDialogs = false;
  Visit visit{host::Role::premiere, {13, 4}, options};
  RecordingListener listener;  // takes the message boxes
  visit.host().setListener(&listener);
  SavedData saved;
  {
    host::Instance fx{visit.effect(), footage};
    std::thread hand([&] {
      HWND window = shownDialog();
      EXPECT_NE(window, nullptr);
      EXPECT_TRUE(waitFor([&] { return footage.reached.load(); }));
      if (window != nullptr) user(window, footage);
      footage.go.store(true);
    });
    fx.press("Analyze");
    hand.join();
    EXPECT_EQ(FindWindowA("#32770", "Varilum4 analyzing..."), nullptr);
    saved = savedData(fx);
  }
  // Nothing of it came the listener's way.
  EXPECT_TRUE(listener.steps.empty());
  EXPECT_TRUE(listener.statusLines.empty());
  EXPECT_EQ(listener.complaints(), "");
  visit.host().setListener(nullptr);
  return saved;
}

TEST(DialogAnalysis, RunsToItsEndBehindTheWindow) {
  const SavedData saved = analyzeBehindTheWindow([](HWND window, WaitingFootage&) {
    // Six frames done; the text counts one ahead.
    EXPECT_EQ(statusOf(window), "7 of 10 frames analyzed");
    EXPECT_EQ(SendDlgItemMessageA(window, CUPDialog::progressBar, PBM_GETPOS, 0, 0), 60);
    if (const char* file = std::getenv("VARILUM_ANALYSIS_SCREENSHOT")) {
      Sleep(300);  // the bar moves smoothly
      EXPECT_TRUE(saveScreenshot(window, file));
    }
  });
  for (std::int32_t i = 0; i < kFrames; ++i) {
    EXPECT_TRUE(saved.analyzed(i)) << i;
    EXPECT_GT(saved.level(0, i), 0.0) << i;
  }
  EXPECT_EQ(saved.byteAt(kAnalysisComplete), 1);
}

void expectStoppedAfter(const SavedData& saved, std::int32_t frames) {
  for (std::int32_t i = 0; i < kFrames; ++i) EXPECT_EQ(saved.analyzed(i), i < frames) << i;
  EXPECT_EQ(saved.byteAt(kAnalysisComplete), 0);
  EXPECT_GT(saved.level(2, 0), 0.0) << "targets are computed all the same";
}

// The frame under way is finished: the request is looked at between frames.
TEST(DialogAnalysis, IsCancelledByItsButton) {
  expectStoppedAfter(
      analyzeBehindTheWindow([](HWND window, WaitingFootage& footage) {
        PostMessageA(GetDlgItem(window, CUPDialog::cancelButton), BM_CLICK, 0, 0);
        EXPECT_TRUE(waitFor([&] { return statusOf(window) == "Termination Initiated.."; }));
        footage.go.store(true);
      }),
      kPause + 1);
}

TEST(DialogAnalysis, IsCancelledByClosingTheWindow) {
  expectStoppedAfter(
      analyzeBehindTheWindow([](HWND window, WaitingFootage& footage) {
        PostMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
        EXPECT_TRUE(waitFor([&] { return statusOf(window) == "Termination Initiated.."; }));
        footage.go.store(true);
      }),
      kPause + 1);
}

}  // namespace
}  // namespace effect_test
