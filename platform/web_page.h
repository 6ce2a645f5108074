// platform/web_page.h — opening a page in the user's browser.
#pragma once

namespace varilum {

// Hands the address to the system's opener and returns at once. Nothing happens when the
// environment says VARILUM_HEADLESS=1, or when there is no opener.
void openWebPage(const char* address) noexcept;

// The effect's help page.
const char* helpAddress() noexcept;

}  // namespace varilum
