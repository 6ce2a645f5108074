// platform/web_page_posix.cpp — opening a page through the desktop's opener.
#include <fcntl.h>
#include <limits.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "platform/headless.h"
#include "platform/web_page.h"

namespace varilum {
namespace {

constexpr int kInheritedFiles = 1024;

// Full path of a program in PATH. Looked up before forking, since little may be called after.
bool findProgram(const char* name, char (&path)[PATH_MAX]) noexcept {
  const char* list = std::getenv("PATH");
  std::string_view rest{list != nullptr ? list : ""};
  while (!rest.empty()) {
    const std::string_view folder = rest.substr(0, rest.find(':'));
    rest.remove_prefix(folder.size() == rest.size() ? rest.size() : folder.size() + 1);
    const int length = std::snprintf(path, sizeof path, "%.*s/%s", static_cast<int>(folder.size()),
                                     folder.data(), name);
    if (!folder.empty() && length > 0 && length < PATH_MAX && access(path, X_OK) == 0) return true;
  }
  return false;
}

[[noreturn]] void becomeOpener(char* path, char* address) noexcept {
  const int nowhere = open("/dev/null", O_RDWR);
  if (nowhere >= 0) {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nowhere, stream);
  }
  // The host's files and pipes are none of the opener's business.
  for (int file = STDERR_FILENO + 1; file < kInheritedFiles; ++file) close(file);
  char* arguments[] = {path, address, nullptr};
  execv(path, arguments);
  _exit(127);
}

}  // namespace

void openWebPage(const char* address) noexcept {
  char path[PATH_MAX];
  if (isHeadless() || !findProgram("xdg-open", path)) return;
  // Twice, so that the opener belongs to the system's first process, which will bury it.
  const pid_t child = fork();
  if (child < 0) return;
  if (child == 0) {
    setsid();
    if (fork() == 0) becomeOpener(path, const_cast<char*>(address));
    _exit(0);
  }
  while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
}

const char* helpAddress() noexcept {
  return VARILUM_HELP_URL;
}

}  // namespace varilum
