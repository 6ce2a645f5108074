// tests/plugin/web_page_test.cpp — opening the help page.
#include "platform/web_page.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace varilum {
namespace {

namespace fs = std::filesystem;

// An opener of our own, first in PATH, that writes down what it was given.
class WebPage : public ::testing::Test {
 protected:
  WebPage() {
    std::string pattern = (fs::temp_directory_path() / "varilum-web-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    const fs::path opener = folder_ / "xdg-open";
    std::ofstream{opener} << "#!/bin/sh\nprintf '%s|%s' \"$#\" \"$1\" > '" << note().string()
                          << ".new'\nmv '" << note().string() << ".new' '" << note().string()
                          << "'\n";
    fs::permissions(opener, fs::perms::owner_all);
    const char* path = getenv("PATH");
    oldPath_ = path != nullptr ? path : "";
    setenv("PATH", (folder_.string() + ":" + oldPath_).c_str(), 1);
    unsetenv("VARILUM_HEADLESS");
  }
  ~WebPage() override {
    setenv("PATH", oldPath_.c_str(), 1);
    unsetenv("VARILUM_HEADLESS");
    fs::remove_all(folder_);
  }

  fs::path note() const { return folder_ / "opened"; }
  std::string opened(std::chrono::milliseconds patience) const {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!fs::exists(note()) && std::chrono::steady_clock::now() < end) {
      std::this_thread::sleep_for(std::chrono::milliseconds{5});
    }
    std::ifstream file{note()};
    return {std::istreambuf_iterator<char>{file}, {}};
  }

  fs::path folder_;
  std::string oldPath_;
};

TEST_F(WebPage, HandsTheAddressToTheOpenerUnchanged) {
  openWebPage("https://example.com/a?b=c&d='$(touch x)'");
  EXPECT_EQ(opened(std::chrono::seconds{20}), "1|https://example.com/a?b=c&d='$(touch x)'");
}

TEST_F(WebPage, LeavesNoChildBehind) {
  openWebPage("https://example.com/");
  EXPECT_FALSE(opened(std::chrono::seconds{20}).empty());
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(WebPage, DoesNothingWithNobodyAtTheScreen) {
  setenv("VARILUM_HEADLESS", "1", 1);
  openWebPage("https://example.com/");
  EXPECT_EQ(opened(std::chrono::milliseconds{300}), "");
}

TEST_F(WebPage, DoesNothingWithoutAnOpener) {
  setenv("PATH", "", 1);
  openWebPage("https://example.com/");
  EXPECT_EQ(opened(std::chrono::milliseconds{100}), "");
}

}  // namespace
}  // namespace varilum
