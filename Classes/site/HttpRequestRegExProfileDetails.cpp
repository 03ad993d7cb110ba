#include "site/HttpRequestRegExProfileDetails.h"

namespace veltramoor {

// The greedy parts go to the last head's end and the last foot.
const std::string_view kAccountRegex =
    R"rx(([\s\S]*</head>)[\s\S]*?(<h2><span>Preferences[\s\S]*)<div id="foot")rx";

namespace {

// On this page the pop-under is a block, on the details page a script.
constexpr const char* kPopUnderRegex = R"(<!-- popunder -->[\s\S]*?</div>)";
constexpr const char* kErrorPage = "<html>Error loading page.  Try again.</html>";

}  // namespace

std::optional<std::string> HttpRequestRegExProfileDetails::cleaned(std::string_view page,
                                                                   PageCleaning cleaning) {
  const std::vector<std::string> parts = cleaning.firstMatch(page, kAccountRegex);
  if (parts.size() < 3) {
    return std::nullopt;
  }
  std::string result = parts[1] + parts[2];
  if (!cleaning.removeAll(result, {kPopUnderRegex}) ||
      !cleaning.removeAll(result, PageCleaning::advertising())) {
    return std::nullopt;
  }
  return result;
}

void HttpRequestRegExProfileDetails::request() {
  HttpRequest::request();
  if (result()) {
    setResult(cleaned(*result()).value_or(kErrorPage));
  }
}

}  // namespace veltramoor
