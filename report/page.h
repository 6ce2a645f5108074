// report/page.h — the page's own parts, as they stand in page.html, page.css and page.js.
#pragma once

#include <string_view>

namespace report {

/// Holds the marks "@style@", "@script@", "@title@" and "@data@", once each.
extern const std::string_view kPageHtml;
extern const std::string_view kPageCss;
extern const std::string_view kPageJs;

}  // namespace report
