// report/report_page.cpp — a report as one page of HTML.
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "report/base64.h"
#include "report/page.h"
#include "report/report.h"
#include "report/report_json.h"

namespace report {
namespace {

std::string dataAddress(const std::string& jpeg) {
  return "data:image/jpeg;base64," + base64(jpeg);
}

std::string escapedForHtml(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

// A "</script>" in a file's name would end the element that holds the data.
std::string escapedForScript(std::string_view json) {
  std::string escaped;
  escaped.reserve(json.size());
  for (const char c : json) {
    if (c == '<') {
      escaped += "\\u003c";
    } else {
      escaped += c;
    }
  }
  return escaped;
}

std::string pageData(const Report& report) {
  nlohmann::ordered_json json = jsonOf(report);
  json["thumbnails"] = nlohmann::ordered_json::array();
  for (const Thumbnail& picture : report.thumbnails) {
    json["thumbnails"].push_back(
        {{"frame", picture.frame}, {"picture", dataAddress(picture.jpeg)}});
  }
  json["comparisons"] = nlohmann::ordered_json::array();
  for (const Comparison& pair : report.comparisons) {
    json["comparisons"].push_back({{"frame", pair.frame},
                                   {"why", pair.why},
                                   {"before", dataAddress(pair.jpegBefore)},
                                   {"after", dataAddress(pair.jpegAfter)}});
  }
  return escapedForScript(textOf(json));
}

// The page is walked once: a mark that stands in what is filled in is not filled in again.
std::string filledIn(std::string_view page,
                     const std::array<std::pair<std::string_view, std::string>, 4>& marks) {
  std::string text;
  while (true) {
    std::size_t nearest = std::string_view::npos;
    const std::pair<std::string_view, std::string>* found = nullptr;
    for (const auto& mark : marks) {
      const std::size_t at = page.find(mark.first);
      if (at >= nearest) continue;
      nearest = at;
      found = &mark;
    }
    text += page.substr(0, nearest);
    if (found == nullptr) return text;
    text += found->second;
    page.remove_prefix(nearest + found->first.size());
  }
}

}  // namespace

std::string pageReport(const Report& report) {
  return filledIn(kPageHtml, {{{"@style@", std::string(kPageCss)},
                               {"@script@", std::string(kPageJs)},
                               {"@title@", escapedForHtml(report.input)},
                               {"@data@", pageData(report)}}});
}

}  // namespace report
