#include "site/PageTrouble.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "Util/Ascii.h"
#include "Util/GTMNSStringHTMLAdditions.h"
#include "Util/PrintableLine.h"
#include "Util/Utf.h"
#include "platform/FailureWords.h"
#include "site/HttpRequest.h"

namespace veltramoor {
namespace {

std::size_t findIgnoringCase(std::string_view text, std::string_view lowerCaseWord,
                             std::size_t from = 0) {
  const auto found = std::search(
      text.begin() + static_cast<std::ptrdiff_t>(std::min(from, text.size())), text.end(),
      lowerCaseWord.begin(), lowerCaseWord.end(), [](char a, char b) { return lowerCase(a) == b; });
  return found == text.end() ? std::string_view::npos
                             : static_cast<std::size_t>(found - text.begin());
}

// Whether one host is a name below the other: "www.index.example" is of the site "index.example".
bool isSameSite(std::string_view a, std::string_view b) {
  const std::string_view longer = a.size() > b.size() ? a : b;
  const std::string_view shorter = a.size() > b.size() ? b : a;
  return longer == shorter ||
         (longer.ends_with(shorter) && longer[longer.size() - shorter.size() - 1] == '.');
}

// Every login form has a field that hides what is typed.
bool asksForPassword(std::string_view page) {
  constexpr std::array<std::string_view, 3> kFields{"type=\"password\"", "type='password'",
                                                    "type=password"};
  return std::any_of(kFields.begin(), kFields.end(), [page](std::string_view field) {
    return findIgnoringCase(page, field) != std::string_view::npos;
  });
}

// At most `count` characters of UTF-8; "..." stands for what was left out.
std::string shortened(std::string text, std::size_t count) {
  std::u16string units = utf16FromUtf8(text);
  if (units.size() <= count) {
    return text;
  }
  units.resize(count - 3);
  return utf8FromUtf16(units) + "...";
}

std::string titleOf(std::string_view page) {
  constexpr std::size_t kLongest = 60;
  // A page's head comes first; what is called a title after that much is none.
  page = page.substr(0, std::size_t{64} * 1024);
  std::size_t begin = findIgnoringCase(page, "<title");
  begin = begin == std::string_view::npos ? begin : page.find('>', begin);
  if (begin == std::string_view::npos) {
    return {};
  }
  const std::size_t end = findIgnoringCase(page, "</title", begin);
  const std::string_view text =
      page.substr(begin + 1, std::min(end, begin + 1 + std::size_t{1024}) - begin - 1);
  return shortened(
      printableLine(isValidUtf8(text) ? gtm_stringByUnescapingFromHTML(text) : std::string(text)),
      kLongest);
}

std::string sizeInWords(std::size_t bytes) {
  return bytes < 1000 ? fmt::format("{} bytes", bytes) : fmt::format("{} KB", (bytes + 500) / 1000);
}

std::string whatThePageIs(const PageTrouble& trouble) {
  if (trouble.bytes == 0) {
    return "The page is empty.";
  }
  return trouble.title.empty()
             ? fmt::format("The page has {} and no title.", sizeInWords(trouble.bytes))
             : fmt::format("The page has {} and the title \"{}\".", sizeInWords(trouble.bytes),
                           trouble.title);
}

}  // namespace

PageTrouble troubleOf(const HttpRequest& request) {
  PageTrouble trouble;
  if (!request.urlResponse()) {
    trouble.kind = PageTrouble::Kind::NotReached;
    trouble.failure = request.failure();
    return trouble;
  }
  const std::string_view page =
      request.responseData() ? std::string_view(*request.responseData()) : std::string_view();
  trouble.statusCode = request.urlResponse()->statusCode;
  trouble.host = request.urlResponse()->url.host();
  trouble.bytes = page.size();
  trouble.title = titleOf(page);
  const Url& from = request.urlResponse()->url;
  trouble.redirected = request.url() && from != *request.url();
  trouble.kind = request.url() && !isSameSite(request.url()->host(), trouble.host)
                     ? PageTrouble::Kind::Moved
                 : !request.isResponseValid() ? PageTrouble::Kind::ErrorStatus
                 : asksForPassword(page)      ? PageTrouble::Kind::SignedOut
                                              : PageTrouble::Kind::NoRows;
  return trouble;
}

std::string sentenceOf(const PageTrouble& trouble) {
  switch (trouble.kind) {
    case PageTrouble::Kind::NotReached:
      return trouble.failure ? sentenceOf(*trouble.failure) : "The site could not be asked.";
    case PageTrouble::Kind::ErrorStatus:
      return fmt::format("The site answered with an error ({}).", trouble.statusCode);
    case PageTrouble::Kind::Moved:
      return fmt::format("The site has moved: {} answered in its place.",
                         printableLine(trouble.host));
    case PageTrouble::Kind::SignedOut:
      return trouble.redirected
                 ? "The site asks you to sign in."
                 : "The page lists nothing and has a login form: perhaps you are signed out.";
    case PageTrouble::Kind::NoRows:
      break;
  }
  return whatThePageIs(trouble);
}

}  // namespace veltramoor
