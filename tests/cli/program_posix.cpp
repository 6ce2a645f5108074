// tests/cli/program_posix.cpp — running programs on POSIX systems.
#include "tests/cli/program.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <stdexcept>

namespace cli::test {
namespace {

constexpr auto kPatience = std::chrono::minutes(2);

struct Pipe {
  int read = -1;
  int write = -1;
  Pipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    read = ends[0];
    write = ends[1];
  }
};

}  // namespace

Outcome run(const std::vector<std::string>& argv, const Watcher& watch) {
  Pipe out;
  Pipe err;
  std::vector<char*> raw;
  for (const std::string& text : argv) raw.push_back(const_cast<char*>(text.c_str()));
  raw.push_back(nullptr);
  const pid_t child = ::fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child == 0) {
    const int nothing = ::open("/dev/null", O_RDONLY);
    ::dup2(nothing, STDIN_FILENO);
    ::dup2(out.write, STDOUT_FILENO);
    ::dup2(err.write, STDERR_FILENO);
    ::execvp(raw[0], raw.data());
    ::_exit(127);
  }
  ::close(out.write);
  ::close(err.write);
  Outcome outcome;
  std::array<pollfd, 2> polled{pollfd{out.read, POLLIN, 0}, pollfd{err.read, POLLIN, 0}};
  const auto end = std::chrono::steady_clock::now() + kPatience;
  bool signalled = false;
  while (polled[0].fd >= 0 || polled[1].fd >= 0) {
    if (std::chrono::steady_clock::now() > end) ::kill(child, SIGKILL);
    if (::poll(polled.data(), polled.size(), 100) <= 0) continue;
    for (std::size_t i = 0; i < polled.size(); ++i) {
      if (polled[i].fd < 0 || polled[i].revents == 0) continue;
      std::array<char, 65536> chunk{};
      const ssize_t got = ::read(polled[i].fd, chunk.data(), chunk.size());
      if (got <= 0) {
        ::close(polled[i].fd);
        polled[i].fd = -1;
        continue;
      }
      (i == 0 ? outcome.out : outcome.err).append(chunk.data(), static_cast<std::size_t>(got));
    }
    if (watch && !signalled) {
      if (const int number = watch(outcome.out); number != 0) {
        ::kill(child, number);
        signalled = true;
      }
    }
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  outcome.code = WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
  return outcome;
}

}  // namespace cli::test
