// tests/effect/recording_listener.h — remembers what the host would have shown.
#pragma once

#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "host/listener.h"

namespace effect_test {

class RecordingListener : public host::Listener {
 public:
  struct Message {
    host::MessageKind kind;
    std::string caption;
    std::string text;
  };

  void message(host::MessageKind kind, std::string_view caption, std::string_view text) override {
    const std::lock_guard lock(mutex_);
    messages_.push_back({kind, std::string(caption), std::string(text)});
  }
  bool progress(std::int32_t done, std::int32_t total) override {
    steps.emplace_back(done, total);
    return stopAfter < 0 || static_cast<int>(steps.size()) < stopAfter;
  }
  void infoText(std::string_view first, std::string_view second) override {
    infoLines.emplace_back(std::string(first), std::string(second));
  }

  void status(std::string_view title, std::string_view text) override {
    statusLines.emplace_back(std::string(title), std::string(text));
  }

  // Messages for the user; protocol remarks for developers are kept apart.
  std::vector<Message> shown() const {
    std::vector<Message> result;
    const std::lock_guard lock(mutex_);
    for (const Message& m : messages_) {
      if (m.kind != host::MessageKind::protocol) result.push_back(m);
    }
    return result;
  }
  std::vector<std::string> protocol() const {
    std::vector<std::string> result;
    const std::lock_guard lock(mutex_);
    for (const Message& m : messages_) {
      if (m.kind == host::MessageKind::protocol) result.push_back(m.text);
    }
    return result;
  }

  int stopAfter = -1;  // progress steps after which the user cancels; negative = never
  std::vector<std::pair<std::int32_t, std::int32_t>> steps;
  std::vector<std::pair<std::string, std::string>> infoLines;
  std::vector<std::pair<std::string, std::string>> statusLines;

 private:
  mutable std::mutex mutex_;
  std::vector<Message> messages_;
};

}  // namespace effect_test
