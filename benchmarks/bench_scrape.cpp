// Scraping listing pages, measured against ICU alone.
#include <benchmark/benchmark.h>
#include <fmt/core.h>
#include <unicode/uregex.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "ListingPages.h"
#include "Ratio.h"
#include "Util/Utf.h"
#include "site/TorrentScraping.h"

namespace {

using namespace veltramoor;

/// The least that matching the row expression can cost: compiled beforehand, text in UTF-16
/// already, no capture copied.
class BareRows {
 public:
  explicit BareRows(std::string_view page) : text_(utf16FromUtf8(page)) {
    const std::u16string regex = utf16FromUtf8(kTorrentRowRegex);
    UErrorCode status = U_ZERO_ERROR;
    expression_.reset(
        uregex_open(regex.data(), static_cast<std::int32_t>(regex.size()), 0, nullptr, &status));
    if (U_FAILURE(status)) {
      std::abort();
    }
  }

  std::size_t count() {
    UErrorCode status = U_ZERO_ERROR;
    uregex_setText(expression_.get(), text_.data(), static_cast<std::int32_t>(text_.size()),
                   &status);
    std::size_t rows = 0;
    while (uregex_findNext(expression_.get(), &status)) {
      ++rows;
    }
    return rows;
  }

 private:
  struct Closer {
    void operator()(URegularExpression* expression) const { uregex_close(expression); }
  };
  std::u16string text_;
  std::unique_ptr<URegularExpression, Closer> expression_;
};

void scrape(const std::string& page, std::size_t rows) {
  static const std::vector<std::string> history(50, "A name that is in no page");
  const auto torrents = torrentsInPage(page, history);
  if (torrents.size() != rows) {
    fmt::print("{} rows instead of {}\n", torrents.size(), rows);
    std::exit(1);
  }
  benchmark::DoNotOptimize(torrents.data());
}

}  // namespace

int main() {
  Ratios ratios;
  const std::string whole = listingPage();
  fmt::print("page of {} bytes\n", whole.size());

  for (const bool accents : {false, true}) {
    const std::string page = listingPage({.accents = accents});
    BareRows floor(page);
    ratios.compare(
        accents ? "30 rows, some names beyond ASCII" : "30 rows, ASCII", 1.15,
        [&] { scrape(page, 30); }, [&] { benchmark::DoNotOptimize(floor.count()); }, 401);
  }

  const auto wholePage = [&] { scrape(whole, 30); };
  struct Case {
    const char* name;
    std::string page;
    std::size_t rows;
  };
  const Case cases[] = {
      {"last 3 of 30 rows incomplete", listingPage({.incomplete = 3}), 27},
      {"last 10 of 30 rows incomplete", listingPage({.incomplete = 10}), 20},
      {"all of 30 rows incomplete", listingPage({.incomplete = 30}), 0},
      {"100 rows in another layout", listingPage({.rows = 100, .otherLayout = true}), 0},
      {"1 MB without rows", pageWithoutRows(1 << 20), 0},
  };
  for (const Case& c : cases) {
    ratios.compare(
        c.name, 2.0, [&] { scrape(c.page, c.rows); }, wholePage, 31);
  }
  return ratios.exitCode();
}
