#include "site/HttpRequestRegExDetails.h"

#include "platform/SiteConfiguration.h"

namespace veltramoor {

// The greedy parts go to the last head's end and the last comments block.
const std::string_view kDetailsRegex =
    R"rx(([\s\S]*</head>)[\s\S]*?)rx"
    R"rx((<div id="detailsframe">[\s\S]*<div id="comments">[\s\S]*?</div>))rx";

namespace {

// On this page the pop-under is a script, on the account page a block.
constexpr const char* kPopUnderRegex = R"(<!-- popunder -->[\s\S]*?</script>)";

std::string movieLinkRegex() {
  return R"(["'](http://)" + PageCleaning::quoted(SiteConfiguration::current().movieDatabaseHost) +
         R"(/.*?)["'])";
}

}  // namespace

std::optional<HttpRequestRegExDetails::Cleaned> HttpRequestRegExDetails::cleaned(
    std::string_view page, PageCleaning cleaning) {
  const std::vector<std::string> parts = cleaning.firstMatch(page, kDetailsRegex);
  if (parts.size() < 3) {
    return std::nullopt;
  }
  Cleaned result;
  result.imdb = cleaning.capture(parts[2], movieLinkRegex(), 1);
  if (result.imdb == "") {
    result.imdb.reset();
  }
  result.page = parts[1] + parts[2];
  if (!cleaning.removeAll(result.page, {kPopUnderRegex}) ||
      !cleaning.removeAll(result.page, PageCleaning::advertising())) {
    return std::nullopt;
  }
  return result;
}

void HttpRequestRegExDetails::request() {
  imdb_.reset();
  HttpRequest::request();
  if (!result()) {
    return;
  }
  if (std::optional<Cleaned> details = cleaned(*result())) {
    setResult(std::move(details->page));
    imdb_ = std::move(details->imdb);
  }
}

}  // namespace veltramoor
