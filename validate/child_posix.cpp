// validate/child_posix.cpp — a check in a process of its own: a fork of this one.
#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <system_error>

#include "validate/child.h"

namespace validate {
namespace {

using Clock = std::chrono::steady_clock;
constexpr int kFinished = 0;
constexpr int kBrokenPipe = 125;
constexpr std::chrono::milliseconds kTick{100};  // how soon a wish to stop is heard

[[noreturn]] void fail(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int number() const noexcept { return number_; }
  void close() noexcept {
    if (number_ >= 0) ::close(number_);
    number_ = -1;
  }

 private:
  int number_;
};

void writeAll(int channel, const std::string& text) noexcept {
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t count = ::write(channel, text.data() + done, text.size() - done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) _exit(kBrokenPipe);  // nobody listens any more
    done += static_cast<std::size_t>(count);
  }
}

// Reads until the child closes its end. Gives the reason to kill it, if there is one.
std::optional<Ending> listen(int channel, const ChildWatch& watch, JournalReader& journal) {
  char buffer[4096];
  Clock::time_point heard = Clock::now();
  for (;;) {
    if (watch.stopAsked && watch.stopAsked()) return Ending::interrupted;
    if (Clock::now() - heard > watch.silence) return Ending::hung;
    pollfd wait{channel, POLLIN, 0};
    const int ready = poll(&wait, 1, static_cast<int>(kTick.count()));
    if (ready < 0 && errno != EINTR) fail("poll");
    if (ready <= 0) continue;
    const ssize_t count = ::read(channel, buffer, sizeof buffer);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) fail("read");
    if (count == 0) return std::nullopt;
    heard = Clock::now();
    journal.take({buffer, static_cast<std::size_t>(count)});
  }
}

int waitFor(pid_t child) {
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) fail("waitpid");
  }
  return status;
}

}  // namespace

void runChild(const Check& check, const Subject& subject, std::uint64_t channel) {
  for (const int signal : {SIGINT, SIGTERM, SIGPIPE}) std::signal(signal, SIG_DFL);
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);
  // What effects print is not the validator's answer.
  dup2(STDERR_FILENO, STDOUT_FILENO);
  // Effects of ours keep message boxes and the browser to themselves then.
  setenv("VARILUM_HEADLESS", "1", 1);
  const int pipe = static_cast<int>(channel);
  Journal journal([pipe](const JournalLine& line) { writeAll(pipe, writeLine(line) + "\n"); });
  runHere(check, subject, journal);
  _exit(kFinished);
}

ChildOutcome runInChild(const Check& check, const Subject& subject, const ChildWatch& watch) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) fail("pipe");
  Descriptor reading(ends[0]);
  Descriptor writing(ends[1]);
  const pid_t child = fork();
  if (child < 0) fail("fork");
  if (child == 0) runChild(check, subject, static_cast<std::uint64_t>(writing.number()));
  writing.close();

  JournalReader journal(watch.onLine);
  const std::optional<Ending> killed = listen(reading.number(), watch, journal);
  if (killed) kill(child, SIGKILL);
  const int status = waitFor(child);
  if (killed) return {*killed, {}};
  // A wish to stop may have reached the child first, and ended it.
  if (watch.stopAsked && watch.stopAsked()) return {Ending::interrupted, {}};
  if (WIFSIGNALED(status)) {
    const int signal = WTERMSIG(status);
    return {Ending::crashed, "signal " + std::to_string(signal) + " (" + strsignal(signal) + ")"};
  }
  if (journal.done() && WEXITSTATUS(status) == kFinished) return {Ending::finished, {}};
  return {Ending::exited, "exit code " + std::to_string(WEXITSTATUS(status))};
}

}  // namespace validate
