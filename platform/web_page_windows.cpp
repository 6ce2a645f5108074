// platform/web_page_windows.cpp — opening a page through the Windows shell.
#include <windows.h>

// shellapi.h needs windows.h first.
#include <shellapi.h>

#include "platform/headless.h"
#include "platform/web_page.h"

namespace varilum {

void openWebPage(const char* address) noexcept {
  if (isHeadless()) return;
  ShellExecuteA(nullptr, "open", address, nullptr, nullptr, SW_SHOWNORMAL);
}

const char* helpAddress() noexcept {
  return VARILUM_HELP_URL;
}

}  // namespace varilum
