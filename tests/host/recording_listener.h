// tests/host/recording_listener.h — keeps what the host would have shown.
#pragma once

#include <algorithm>
#include <limits>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "host/listener.h"

class RecordingListener : public host::Listener {
 public:
  struct Message {
    host::MessageKind kind;
    std::string caption;
    std::string text;
  };

  void message(host::MessageKind kind, std::string_view caption, std::string_view text) override {
    const std::lock_guard guard(mutex_);
    messages_.push_back({kind, std::string(caption), std::string(text)});
  }

  bool progress(std::int32_t done, std::int32_t total) override {
    const std::lock_guard guard(mutex_);
    steps.emplace_back(done, total);
    return static_cast<std::int32_t>(steps.size()) < stopAtStep;
  }

  void infoText(std::string_view first, std::string_view second) override {
    const std::lock_guard guard(mutex_);
    infoLines.emplace_back(std::string(first), std::string(second));
  }

  void status(std::string_view title, std::string_view text) override {
    const std::lock_guard guard(mutex_);
    statusLines.emplace_back(std::string(title), std::string(text));
  }

  // Messages for the user, in order.
  std::vector<Message> shown() const {
    const std::lock_guard guard(mutex_);
    std::vector<Message> found;
    for (const Message& m : messages_) {
      if (m.kind != host::MessageKind::protocol) found.push_back(m);
    }
    return found;
  }

  std::vector<std::string> texts(host::MessageKind kind) const {
    const std::lock_guard guard(mutex_);
    std::vector<std::string> found;
    for (const Message& m : messages_) {
      if (m.kind == kind) found.push_back(m.text);
    }
    return found;
  }

  // Broken rules, one a line; empty when there were none.
  std::string complaints() const {
    std::string all;
    for (const std::string& text : texts(host::MessageKind::protocol)) all += text + "\n";
    return all;
  }

  void forget() {
    const std::lock_guard guard(mutex_);
    messages_.clear();
  }

  std::vector<std::pair<std::int32_t, std::int32_t>> steps;
  std::vector<std::pair<std::string, std::string>> infoLines;
  std::vector<std::pair<std::string, std::string>> statusLines;
  static constexpr std::int32_t kNeverStop = std::numeric_limits<std::int32_t>::max();
  std::int32_t stopAtStep = kNeverStop;  // 1-based

 private:
  mutable std::mutex mutex_;
  std::vector<Message> messages_;
};
