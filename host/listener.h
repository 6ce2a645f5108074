// host/listener.h — what the host would show its user.
#pragma once

#include <cstdint>
#include <string_view>

namespace host {

enum class MessageKind {
  info,     // return message without the error flag
  error,    // return message with the error flag
  box,      // a message box that the effect opened
  protocol  // the effect or the host's user broke a rule of the interface; for developers
};

// Calls come on the thread that sent the command, except boxes, which may come on any.
class Listener {
 public:
  Listener() = default;
  Listener(const Listener&) = default;
  Listener& operator=(const Listener&) = default;
  virtual ~Listener() = default;

  virtual void message(MessageKind kind, std::string_view caption, std::string_view text);
  // Progress of the effect's own dialog: done may exceed total by one. False cancels.
  virtual bool progress(std::int32_t done, std::int32_t total);
  // Title and status line of a dialog of the effect's own, before its progress (of 100) is told.
  virtual void status(std::string_view title, std::string_view text);
  // The two lines of the Info panel.
  virtual void infoText(std::string_view first, std::string_view second);
};

}  // namespace host
