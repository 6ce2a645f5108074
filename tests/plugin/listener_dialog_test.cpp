// tests/plugin/listener_dialog_test.cpp — the worker dialog where the host shows it.
#include "platform/listener_dialog.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "hostapi/commands.h"
#include "hostapi/suites/basic.h"

namespace varilum {
namespace {

using namespace std::chrono_literals;

struct Shown {
  std::string title;
  std::string status;
  std::int32_t position;
};

// A host that takes progress and can wish to stop.
class Host {
 public:
  Host() {
    current_ = this;
    basic_.AcquireSuite = [](const char* name, std::int32_t version, const void** table) {
      if (std::strcmp(name, kVarilumProgressSuite) != 0 || version != 1) return 1;
      *table = &current_->suite_;
      ++current_->held;
      return 0;
    };
    basic_.ReleaseSuite = [](const char*, std::int32_t) {
      --current_->held;
      return 0;
    };
    suite_.showProgress = [](const char* title, const char* status, std::int32_t position) {
      current_->shown.push_back({title, status, position});
      current_->shownBy = std::this_thread::get_id();
      return status == current_->stopAt ? std::int32_t{PF_Interrupt_CANCEL} : 0;
    };
    in.pica_basicP = &basic_;
  }

  PF_InData in{};
  std::vector<Shown> shown;
  std::thread::id shownBy;
  std::string stopAt = "-";
  int held = 0;

 private:
  static inline Host* current_ = nullptr;
  SPBasicSuite basic_{};
  Varilum_ProgressSuite1 suite_{};
};

using Work = std::function<bool(WorkerBlock&)>;

bool work(WorkerBlock& block) {
  return (*static_cast<Work*>(block.context))(block);
}

std::int64_t runDialog(Host& host, Work job, bool allowCancel = true) {
  ListenerDialog dialog{host.in, work, &job, "Title", allowCancel};
  EXPECT_TRUE(dialog.hasListener());
  return dialog.doModal();
}

TEST(ListenerDialog, ShowsEveryReportOnTheThreadThatWaits) {
  Host host;
  std::thread::id worker;
  const auto result = runDialog(host, [&](WorkerBlock& block) {
    worker = std::this_thread::get_id();
    sendProgress(block, "one", 20);
    sendStatus(block, "two");
    return true;
  });
  EXPECT_EQ(result, kWorkerSucceeded);
  EXPECT_NE(worker, std::this_thread::get_id());
  EXPECT_EQ(host.shownBy, std::this_thread::get_id());
  ASSERT_EQ(host.shown.size(), 3u);
  EXPECT_EQ(host.shown[0].title, "Title");
  EXPECT_EQ(host.shown[0].status, "one");
  EXPECT_EQ(host.shown[0].position, 0);
  EXPECT_EQ(host.shown[1].position, 20);
  EXPECT_EQ(host.shown[2].status, "two");
  EXPECT_EQ(host.held, 0);
}

TEST(ListenerDialog, EndsAsItsWorkerDoes) {
  Host host;
  EXPECT_EQ(runDialog(host, [](WorkerBlock&) { return false; }), kWorkerFailed);
  EXPECT_EQ(runDialog(host, [](WorkerBlock&) -> bool { throw 4; }), kWorkerFailed);
}

TEST(ListenerDialog, AsksTheWorkerToStopAndDropsWhatItStillSays) {
  Host host;
  host.stopAt = "working";
  bool asked = false;
  const auto result = runDialog(host, [&](WorkerBlock& block) {
    sendStatus(block, "working");
    while (block.stopRequested.load() == 0) std::this_thread::sleep_for(1ms);
    asked = true;
    sendProgress(block, "too late", 99);
    return true;
  });
  EXPECT_EQ(result, kWorkerCancelled);
  EXPECT_TRUE(asked);
  ASSERT_EQ(host.shown.size(), 2u);
  EXPECT_EQ(host.shown[1].status, "Termination Initiated..");
}

TEST(ListenerDialog, SaysWhenTheWorkerIsSlowToStop) {
  Host host;
  host.stopAt = "working";
  const auto result = runDialog(host, [](WorkerBlock& block) {
    sendStatus(block, "working");
    std::this_thread::sleep_for(700ms);
    return true;
  });
  EXPECT_EQ(result, kWorkerCancelled);
  ASSERT_EQ(host.shown.size(), 3u);
  EXPECT_EQ(host.shown[2].status, "Termination Complete ..Shutting Down !!");
}

TEST(ListenerDialog, WithoutLeaveToCancelGoesOn) {
  Host host;
  host.stopAt = "working";
  const auto result = runDialog(
      host,
      [](WorkerBlock& block) {
        sendStatus(block, "working");
        return block.stopRequested.load() == 0;
      },
      false);
  EXPECT_EQ(result, kWorkerSucceeded);
}

TEST(ListenerDialog, RunsAgainAfterACancel) {
  Host host;
  host.stopAt = "first";
  int runs = 0;
  Work job = [&](WorkerBlock& block) {
    sendStatus(block, ++runs == 1 ? "first" : "second");
    return true;
  };
  ListenerDialog dialog{host.in, work, &job, "Title", true};
  EXPECT_EQ(dialog.doModal(), kWorkerCancelled);
  EXPECT_EQ(dialog.doModal(), kWorkerSucceeded);
}

TEST(ListenerDialog, CutsTheTitle) {
  Host host;
  Work job = [](WorkerBlock& block) {
    sendStatus(block, "here");
    return true;
  };
  ListenerDialog dialog{host.in, work, &job, std::string(300, 't').c_str(), true};
  dialog.doModal();
  ASSERT_FALSE(host.shown.empty());
  EXPECT_EQ(host.shown[0].title, std::string(255, 't'));
}

}  // namespace
}  // namespace varilum
