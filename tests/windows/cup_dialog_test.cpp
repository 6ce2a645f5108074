// tests/windows/cup_dialog_test.cpp — the real dialog window, watched and pressed from another
// thread.
#include "platform/cup_dialog.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>

#include "tests/windows/screenshot.h"

namespace varilum {
namespace {

constexpr const char* kTitle = "Varilum4 analyzing...";

// What the worker of a case does; it gets the block as the real one does.
using Work = std::function<bool(WorkerBlock&)>;

// Set once the worker runs: a request to stop that comes before then keeps it from starting.
std::atomic<bool> begun{false};

bool work(WorkerBlock& block) {
  begun.store(true);
  return (*static_cast<Work*>(block.context))(block);
}

class Dialog : public CUPDialog {
 public:
  explicit Dialog(Work& its, bool allowCancel = true)
      : CUPDialog(nullptr, work, &its, kTitle, allowCancel) {
    begun.store(false);
  }
  ~Dialog() override { cleanup(); }

  bool refuseThread = false;
  int hooked = 0;
  bool hookedUnhandled = false;

 protected:
  INT_PTR messageHook(HWND, UINT, WPARAM, LPARAM, bool handled) noexcept override {
    ++hooked;
    hookedUnhandled |= !handled;
    return 0;
  }
  HANDLE startThread(LPTHREAD_START_ROUTINE routine, void* block) noexcept override {
    return refuseThread ? nullptr : CUPDialog::startThread(routine, block);
  }
};

// The dialog once it is shown and its worker runs; null after some seconds without.
HWND findDialog() {
  for (int i = 0; i < 500; ++i) {
    if (HWND window = FindWindowA("#32770", kTitle);
        window != nullptr && IsWindowVisible(window) && begun.load()) {
      return window;
    }
    Sleep(10);
  }
  return nullptr;
}

std::string textOf(HWND window, int control) {
  char text[256] = {};
  SendDlgItemMessageA(window, control, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
  return text;
}

bool waitFor(const std::function<bool()>& condition) {
  for (int i = 0; i < 500; ++i) {
    if (condition()) return true;
    Sleep(10);
  }
  return false;
}

bool closeIsGrey(HWND window) {
  const UINT state = GetMenuState(GetSystemMenu(window, FALSE), SC_CLOSE, MF_BYCOMMAND);
  return (state & (MF_GRAYED | MF_DISABLED)) != 0;
}

bool cancelIsGrey(HWND window) {
  return IsWindowEnabled(GetDlgItem(window, CUPDialog::cancelButton)) == FALSE;
}

// Works until asked to stop.
bool workOn(WorkerBlock& block) {
  while (block.stopRequested.load() == 0) Sleep(5);
  return true;
}

TEST(CupDialog, ShowsTitleStatusAndPosition) {
  std::atomic<bool> leave{false};
  Work job = [&](WorkerBlock& block) {
    sendProgress(block, "3 of 10 frames analyzed", 40);
    while (!leave.load()) Sleep(5);
    return true;
  };
  Dialog dialog{job};
  std::thread watcher([&] {
    HWND window = findDialog();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(waitFor([&] {
      return SendDlgItemMessageA(window, CUPDialog::progressBar, PBM_GETPOS, 0, 0) == 40;
    }));
    EXPECT_EQ(textOf(window, CUPDialog::statusLine), "3 of 10 frames analyzed");
    EXPECT_EQ(textOf(window, CUPDialog::cancelButton), "&Cancel");
    EXPECT_FALSE(cancelIsGrey(window));
    EXPECT_FALSE(closeIsGrey(window));
    if (const char* file = std::getenv("VARILUM_SCREENSHOT")) {
      Sleep(300);  // the bar moves smoothly
      EXPECT_TRUE(saveScreenshot(window, file));
    }
    leave.store(true);
  });
  EXPECT_EQ(dialog.doModal(), kWorkerSucceeded);
  watcher.join();
  EXPECT_GT(dialog.hooked, 0);
  EXPECT_TRUE(dialog.hookedUnhandled);
}

TEST(CupDialog, StandsWhereItsTemplateSays) {
  Work job = workOn;
  Dialog dialog{job};
  std::thread watcher([&] {
    HWND window = findDialog();
    ASSERT_NE(window, nullptr);
    const DWORD wanted = 0x82C808C8u;
    const auto style = static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE));
    EXPECT_EQ(style & (WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME),
              wanted & (WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME));
    struct Place {
      int control;
      RECT units;
    };
    // Left, top, width, height; the system makes pixels of each by itself.
    const Place places[] = {{CUPDialog::cancelButton, {129, 50, 50, 14}},
                            {CUPDialog::progressBar, {7, 25, 172, 14}},
                            {CUPDialog::statusLine, {7, 7, 172, 8}}};
    for (Place place : places) {
      RECT shown{};
      GetWindowRect(GetDlgItem(window, place.control), &shown);
      MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&shown), 2);
      MapDialogRect(window, &place.units);
      EXPECT_EQ(shown.left, place.units.left) << place.control;
      EXPECT_EQ(shown.top, place.units.top) << place.control;
      EXPECT_EQ(shown.right - shown.left, place.units.right) << place.control;
      EXPECT_EQ(shown.bottom - shown.top, place.units.bottom) << place.control;
    }
    PostMessageA(window, WM_COMMAND, CUPDialog::cancelButton, 0);
  });
  EXPECT_EQ(dialog.doModal(), kWorkerCancelled);
  watcher.join();
}

TEST(CupDialog, EndsAsItsWorkerDoes) {
  Work good = [](WorkerBlock&) { return true; };
  Work bad = [](WorkerBlock&) { return false; };
  Work throwing = [](WorkerBlock&) -> bool { throw 4; };
  EXPECT_EQ(Dialog{good}.doModal(), kWorkerSucceeded);
  EXPECT_EQ(Dialog{bad}.doModal(), kWorkerFailed);
  EXPECT_EQ(Dialog{throwing}.doModal(), kWorkerFailed);
}

TEST(CupDialog, RunsAgain) {
  int runs = 0;
  Work job = [&](WorkerBlock&) { return ++runs != 2; };
  Dialog dialog{job};
  EXPECT_EQ(dialog.doModal(), kWorkerSucceeded);
  EXPECT_EQ(dialog.doModal(), kWorkerFailed);
  EXPECT_EQ(dialog.doModal(), kWorkerSucceeded);
}

void press(HWND window, bool byClose) {
  if (byClose) {
    PostMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
  } else {
    PostMessageA(GetDlgItem(window, CUPDialog::cancelButton), BM_CLICK, 0, 0);
  }
}

TEST(CupDialog, IsCancelledByTheButtonAndByClose) {
  for (const bool byClose : {false, true}) {
    std::atomic<bool> noticed{false};
    Work job = [&](WorkerBlock& block) {
      while (block.stopRequested.load() == 0) Sleep(5);
      sendStatus(block, "too late");
      noticed.store(true);
      return true;
    };
    Dialog dialog{job};
    std::thread user([&] {
      HWND window = findDialog();
      ASSERT_NE(window, nullptr);
      press(window, byClose);
    });
    const ULONGLONG start = GetTickCount64();
    EXPECT_EQ(dialog.doModal(), kWorkerCancelled) << byClose;
    EXPECT_LT(GetTickCount64() - start, 10000u);
    user.join();
    EXPECT_TRUE(noticed.load());
  }
}

// As a hand would: with the mouse, on the middle of the button.
void click(HWND window) {
  RECT button{};
  GetWindowRect(GetDlgItem(window, CUPDialog::cancelButton), &button);
  SetCursorPos((button.left + button.right) / 2, (button.top + button.bottom) / 2);
  Sleep(50);
  mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
  Sleep(50);
  mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
}

TEST(CupDialog, IsCancelledWithTheMouse) {
  Work job = workOn;
  Dialog dialog{job};
  std::thread user([&] {
    HWND window = findDialog();
    ASSERT_NE(window, nullptr);
    click(window);
  });
  EXPECT_EQ(dialog.doModal(), kWorkerCancelled);
  user.join();
}

TEST(CupDialog, TellsThatItStopsAndGreysCancel) {
  Work job = [](WorkerBlock& block) {
    while (block.stopRequested.load() == 0) Sleep(5);
    Sleep(300);
    return true;
  };
  Dialog dialog{job};
  std::thread user([&] {
    HWND window = findDialog();
    ASSERT_NE(window, nullptr);
    press(window, false);
    EXPECT_TRUE(waitFor(
        [&] { return textOf(window, CUPDialog::statusLine) == "Termination Initiated.."; }));
    EXPECT_TRUE(cancelIsGrey(window));
    EXPECT_TRUE(closeIsGrey(window));
  });
  EXPECT_EQ(dialog.doModal(), kWorkerCancelled);
  user.join();
}

TEST(CupDialog, EndsAWorkerThatDoesNotListen) {
  std::atomic<std::uint32_t> beats{0};
  Work job = [&](WorkerBlock&) {
    for (;;) {
      beats.fetch_add(1);
      Sleep(5);
    }
    return true;
  };
  Dialog dialog{job};
  std::thread user([&] {
    HWND window = findDialog();
    ASSERT_NE(window, nullptr);
    press(window, true);
    EXPECT_TRUE(waitFor([&] {
      return textOf(window, CUPDialog::statusLine) == "Termination Complete ..Shutting Down !!";
    }));
  });
  const ULONGLONG start = GetTickCount64();
  EXPECT_EQ(dialog.doModal(), kWorkerCancelled);
  const ULONGLONG took = GetTickCount64() - start;
  user.join();
  // Two waits of the dialog and one before the force.
  EXPECT_GE(took, 1400u);
  EXPECT_LT(took, 15000u);
  const std::uint32_t last = beats.load();
  Sleep(100);
  EXPECT_EQ(beats.load(), last);
}

TEST(CupDialog, SaysWhenThereIsNoThread) {
  bool ran = false;
  Work job = [&](WorkerBlock&) { return ran = true; };
  Dialog dialog{job};
  dialog.refuseThread = true;
  EXPECT_EQ(dialog.doModal(), kWorkerNotStarted);
  EXPECT_FALSE(ran);
}

TEST(CupDialog, WithoutLeaveToCancelHasNothingToPress) {
  std::atomic<bool> leave{false};
  Work job = [&](WorkerBlock&) {
    while (!leave.load()) Sleep(5);
    return true;
  };
  Dialog dialog{job, false};
  std::thread watcher([&] {
    HWND window = findDialog();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(cancelIsGrey(window));
    EXPECT_TRUE(closeIsGrey(window));
    click(window);
    Sleep(200);
    SendMessageA(window, CUPDialog::enableCancel, 0, 0);
    EXPECT_FALSE(cancelIsGrey(window));
    EXPECT_FALSE(closeIsGrey(window));
    leave.store(true);
  });
  EXPECT_EQ(dialog.doModal(), kWorkerSucceeded);
  watcher.join();
}

}  // namespace
}  // namespace varilum
