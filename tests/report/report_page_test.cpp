// tests/report/report_page_test.cpp — the report for people, as text; a browser tries the rest.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "report/report.h"
#include "tests/report/sample_report.h"

namespace report::test {
namespace {

using testing::HasSubstr;
using testing::Not;

nlohmann::json dataOf(const std::string& page) {
  constexpr std::string_view kOpening = "<script type=\"application/json\" id=\"data\">";
  const std::size_t from = page.find(kOpening) + kOpening.size();
  return nlohmann::json::parse(page.substr(from, page.find("</script>", from) - from));
}

TEST(PageReport, HoldsTheWholeReportAndItsPictures) {
  const nlohmann::json data = dataOf(pageReport(sampleReport()));
  EXPECT_EQ(data["input"], "lamp <&> \"day\".mp4");
  EXPECT_EQ(data["frames"]["input"].size(), 6U);
  EXPECT_EQ(data["thumbnails"][0]["picture"], "data:image/jpeg;base64,Zm91cg==");
  EXPECT_EQ(data["comparisons"][0]["before"], "data:image/jpeg;base64,b2xk");
  EXPECT_EQ(data["comparisons"][0]["after"], "data:image/jpeg;base64,bmV3");
}

TEST(PageReport, FetchesNothing) {
  const std::string page = pageReport(sampleReport());
  EXPECT_THAT(page, Not(HasSubstr("http")));
  EXPECT_THAT(page, Not(HasSubstr("src=")));
  EXPECT_THAT(page, Not(HasSubstr("@import")));
}

TEST(PageReport, LetsNoNameBreakOutOfItsPlace) {
  Report report = sampleReport();
  report.input = "</script></title><b>@data@@script@";
  const std::string page = pageReport(report);
  EXPECT_EQ(dataOf(page)["input"], report.input);
  EXPECT_THAT(page, HasSubstr("<title>&lt;/script&gt;&lt;/title&gt;&lt;b&gt;@data@@script@:"));
  EXPECT_THAT(page, Not(HasSubstr("<b>@")));
}

}  // namespace
}  // namespace report::test
