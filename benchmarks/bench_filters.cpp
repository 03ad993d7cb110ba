// Favourite filters over names, measured against ICU alone; and what hostile ones do to the screen.
#include <fmt/core.h>
#include <unicode/uregex.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "LoopGap.h"
#include "Ratio.h"
#include "Util/Utf.h"
#include "lists/listings/FilterFetchPage.h"
#include "platform/RunLoop.h"
#include "site/BatchDelivery.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t kNames = 1500;
constexpr std::size_t kPageRows = 30;
constexpr double kLimit = 0.2;
constexpr double kHeldLimitMs = 50;
constexpr int kRounds = 11;

constexpr std::array kWords = {"x264",   "x265",    "1080p",   "720p",     "2160p",
                               "WEB",    "BluRay",  "HDTV",    "FLAC",     "epub",
                               "Season", "Orchard", "Lantern", "Meadow",   "Quiet",
                               "Garden", "Atlas",   "edition", "remaster", "complete"};

/// 40 to 120 characters: words of the above and others, so that each is in some names.
std::vector<std::string> randomNames() {
  static constexpr std::array kOthers = {"The",  "of",    "and",   "Silver", "Clock", "S01E04",
                                         "2019", "H.264", "AAC",   "German", "dub",   "part",
                                         "live", "Vol.3", "-team", "[pdf]",  "x26",   "108"};
  std::minstd_rand random(5);
  std::vector<std::string> names;
  while (names.size() < kNames) {
    const std::size_t length = 40 + random() % 81;
    std::string name;
    while (name.size() < length) {
      name +=
          random() % 4 == 0 ? kWords[random() % kWords.size()] : kOthers[random() % kOthers.size()];
      name += random() % 3 == 0 ? '.' : ' ';
    }
    name.resize(length);
    names.push_back(std::move(name));
  }
  return names;
}

struct Closer {
  void operator()(URegularExpression* expression) const { uregex_close(expression); }
};

/// The expressions compiled once and the names converted once: nothing but ICU's matching.
class BareIcu {
 public:
  BareIcu(const std::vector<std::string>& filters, const std::vector<std::string>& names) {
    for (const std::string& name : names) {
      names_.push_back(utf16FromUtf8(name));
    }
    for (const std::string& filter : filters) {
      const std::u16string pattern = utf16FromUtf8(".*(" + filter + ").*");
      UErrorCode status = U_ZERO_ERROR;
      expressions_.emplace_back(uregex_open(
          pattern.data(), static_cast<std::int32_t>(pattern.size()), 0, nullptr, &status));
    }
  }

  std::size_t matches() {
    std::size_t count = 0;
    for (const auto& expression : expressions_) {
      for (const std::u16string& name : names_) {
        UErrorCode status = U_ZERO_ERROR;
        uregex_setText(expression.get(), name.data(), static_cast<std::int32_t>(name.size()),
                       &status);
        count += uregex_find(expression.get(), 0, &status) != 0 ? 1U : 0U;
      }
    }
    return count;
  }

 private:
  std::vector<std::u16string> names_;
  std::vector<std::unique_ptr<URegularExpression, Closer>> expressions_;
};

void compare(Ratios& ratios, const std::string& what, const std::vector<std::string>& texts,
             const std::vector<std::string>& names) {
  const std::vector<Filter> filters(texts.begin(), texts.end());
  BareIcu icu(texts, names);
  std::size_t ours = 0;
  const auto ask = [&] {
    ours = 0;
    for (const Filter& filter : filters) {
      for (const std::string& name : names) {
        ours += filter.isAccepted(name) ? 1U : 0U;
      }
    }
  };
  std::size_t theirs = 0;
  ratios.compare(
      what, kLimit, ask, [&] { theirs = icu.matches(); }, kRounds);
  fmt::print("  {} filters, {} names, {} matches\n", filters.size(), names.size(), ours);
  if (ours != theirs) {
    fmt::print("ICU finds {} matches\n", theirs);
    std::exit(1);
  }
}

/// A page that is there already; the rest of a fetch.
class Judged final : public FetchPage<FilteredPage> {
 public:
  Judged(std::vector<Torrent> page, std::shared_ptr<FilterSet> filters, Completion completion,
         DeliveryPlace place)
      : FetchPage(std::nullopt, std::move(completion), std::move(place)),
        page_(std::move(page)),
        filters_(std::move(filters)) {}

 private:
  void fetch() override {
    returnObject_.accepted = filters_->accepted(page_);
    returnObject_.filters = filters_;
    returnObject_.torrents = std::move(page_);
  }

  std::vector<Torrent> page_;
  std::shared_ptr<FilterSet> filters_;
};

/// Milliseconds that the main thread was held at most while all names went through `filters`.
double heldBy(RunLoop& loop, const std::vector<std::string>& names,
              const std::shared_ptr<FilterSet>& filters) {
  OperationQueue queue(10);
  std::size_t kept = 0;
  BatchDelivery<FilteredPage> delivery([&](FilteredPage page) {
    std::size_t row = 0;
    std::erase_if(*page.torrents, [&](const Torrent&) { return !page.accepted[row++]; });
    kept += page.torrents->size();
  });
  const int pages = static_cast<int>(kNames / kPageRows);
  std::vector<int> numbers(static_cast<std::size_t>(pages));
  std::iota(numbers.begin(), numbers.end(), 0);
  const auto order = std::make_shared<DeliveryOrder>(numbers);
  const int batch = delivery.begin(pages);
  for (const int number : numbers) {
    std::vector<Torrent> page(kPageRows);
    for (std::size_t i = 0; i < kPageRows; ++i) {
      page[i].name = names[static_cast<std::size_t>(number) * kPageRows + i];
    }
    queue.addOperation(std::make_shared<Judged>(
        std::move(page), filters,
        [&delivery, batch](FilteredPage judged) { delivery.deliver(batch, std::move(judged)); },
        DeliveryPlace{order, number, number == 0 ? 999 : number - 1}));
  }
  LoopGap gap;
  while (delivery.outstanding() > 0) {
    loop.runPending();
    gap.turn();
    if (gap.total() > 120'000) {
      fmt::print("the batch did not end\n");
      std::exit(1);
    }
    std::this_thread::sleep_for(1ms);
  }
  fmt::print(
      "  {} of {} names kept, {} of {} filters given up on, {:.0f} ms in all; ran {:.1f} ms of the "
      "longest hold\n",
      kept, names.size(), filters->givenUp().size(), filters->size(), gap.total(),
      gap.ranInLongest());
  return gap.longest();
}

}  // namespace
}  // namespace veltramoor

int main() {
  using namespace veltramoor;
  Ratios ratios;
  const std::vector<std::string> words(kWords.begin(), kWords.end());
  const std::vector<std::string> names = randomNames();
  compare(ratios, "plain words", words, names);
  // What ICU is quickest at: the word stands where `.*` comes to first on its way back.
  std::vector<std::string> ending = names;
  for (std::string& name : ending) {
    name += " x264";
  }
  compare(ratios, "a word at every name's end", std::vector<std::string>(20, "x264"), ending);

  RunLoop loop;
  std::vector<std::string> hostile;
  for (int i = 0; i < 10; ++i) {
    hostile.push_back(fmt::format("(a+)+{}$", std::string(static_cast<std::size_t>(i), '.')));
    hostile.push_back(fmt::format("(.|.|.){{{}}}[\\u0001]", 20 + i));
  }
  std::vector<std::string> tempting = names;
  for (std::string& name : tempting) {
    name = std::string(name.size() / 2, 'a') + name.substr(name.size() / 2) + "!";
  }
  const double held = heldBy(loop, tempting, std::make_shared<FilterSet>(hostile));
  const bool good = held <= kHeldLimitMs;
  fmt::print("main thread held by 20 hostile filters: {:.1f} ms (limit {:.0f} ms) {}\n", held,
             kHeldLimitMs, good ? "ok" : "TOO LONG");
  return good ? ratios.exitCode() : 1;
}
