// Cleaning details and account pages, above all those that cannot be cleaned.
//
// A page without a match may take 2 ms per MB. Its floor is one std::string::find over the page for
// a text that is not in it, the least that looking at a page costs: 0.25 ms per MB on the slowest
// of the machines measured, so that the limit is 8 of it. Without the checks of Classes/regex these
// pages take seconds to hours.
//
// A page with a match is held to ICU alone, finding that match in a text that is in UTF-16 already.
#include <benchmark/benchmark.h>
#include <fmt/core.h>
#include <unicode/uregex.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "ListingPages.h"
#include "Ratio.h"
#include "Util/Utf.h"
#include "site/HttpRequestRegExDetails.h"
#include "site/HttpRequestRegExProfileDetails.h"

namespace {

using namespace veltramoor;

const std::string kHead = "<html><head><title>Page</title></head>\n";
const std::string kFrame = "<div id=\"detailsframe\">\n";
const std::string kComments = "<div id=\"comments\"><p>thank you</p></div>\n";
const std::string kPreferences = "<h2><span>Preferences</span></h2>\n";
const std::string kFoot = "<div id=\"foot\">\n";
const std::string kLogin = "<form action=\"/login\" name=\"loginform\"></form>\n" + kFoot;
const std::string kAdvertising =
    "<!-- popunder --><script>x</script>\n<div class=\"spons-link\"><a>x</a></div>\n"
    "<div class=\"download\">x</div>\n<a href=\"http://sponsored.example/x\">x</a>\n";

bool cleansDetails(const std::string& page) {
  return HttpRequestRegExDetails::cleaned(page).has_value();
}
bool cleansAccount(const std::string& page) {
  return HttpRequestRegExProfileDetails::cleaned(page).has_value();
}

struct Case {
  const char* name;
  bool (*clean)(const std::string&);
  std::string page;
};

std::function<void()> cleaning(const Case& c, bool recognised) {
  return [&c, recognised] {
    if (c.clean(c.page) != recognised) {
      fmt::print("{}: not judged as expected\n", c.name);
      std::exit(1);
    }
  };
}

std::string title(const Case& c) { return fmt::format("{} ({} KB)", c.name, c.page.size() / 1000); }

void compareHopeless(Ratios& ratios, const Case& c) {
  const auto floor = [&c] { benchmark::DoNotOptimize(c.page.find("<no such tag>")); };
  ratios.compare(title(c), 8.0, cleaning(c, false), floor, 31);
}

void compareWhole(Ratios& ratios, const Case& c, std::string_view expression) {
  const std::u16string text = utf16FromUtf8(c.page);
  const std::u16string regex = utf16FromUtf8(expression);
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<URegularExpression, decltype(&uregex_close)> compiled(
      uregex_open(regex.data(), static_cast<std::int32_t>(regex.size()), 0, nullptr, &status),
      &uregex_close);
  const auto floor = [&] {
    uregex_setText(compiled.get(), text.data(), static_cast<std::int32_t>(text.size()), &status);
    if (!uregex_find(compiled.get(), 0, &status) || U_FAILURE(status)) {
      std::abort();
    }
  };
  ratios.compare(title(c), 1.5, cleaning(c, true), floor, 31);
}

}  // namespace

int main() {
  Ratios ratios;
  for (const std::size_t bytes : {40'000U, 1'000'000U, 5'000'000U}) {
    std::string text = pageWithoutRows(bytes);
    text.resize(text.find("<div id=\"foot"));  // the cases put it where it belongs
    for (const Case& c :
         {Case{"details without comments", cleansDetails, kHead + kFrame + text},
          Case{"details without a frame", cleansDetails, kHead + text + kComments},
          Case{"details with comments never closed", cleansDetails,
               kHead + kFrame + text + "<div id=\"comments\">"},
          Case{"sign-in page for the account", cleansAccount, kHead + text + kLogin},
          Case{"account without a foot", cleansAccount, kHead + kPreferences + text}}) {
      compareHopeless(ratios, c);
    }
    if (bytes <= 1'000'000U) {
      compareWhole(ratios,
                   {"whole details", cleansDetails,
                    kHead + kAdvertising + text + kFrame + kAdvertising + text + kComments + kFoot},
                   kDetailsRegex);
      compareWhole(
          ratios,
          {"whole account", cleansAccount,
           kHead + kAdvertising + text + kPreferences + kAdvertising + text + kFoot + text},
          kAccountRegex);
    }
  }
  return ratios.exitCode();
}
