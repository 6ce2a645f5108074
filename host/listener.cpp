// host/listener.cpp — the listener that does nothing.
#include "host/listener.h"

namespace host {

void Listener::message(MessageKind, std::string_view, std::string_view) {}
bool Listener::progress(std::int32_t, std::int32_t) {
  return true;
}
void Listener::status(std::string_view, std::string_view) {}
void Listener::infoText(std::string_view, std::string_view) {}

}  // namespace host
