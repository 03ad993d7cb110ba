#include "ListOutput.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string_view>

#include "PreferencesKeys.h"
#include "Terminal.h"
#include "platform/Preferences.h"
#include "platform/SiteConfiguration.h"

namespace veltramoor::cli {
namespace {

nlohmann::json jsonOf(const Torrent& torrent) {
  return {{"name", torrent.name},
          {"detailsUrl", torrent.detailsUrl},
          {"downloadUrl", torrent.downloadUrl},
          {"type", torrent.type},
          {"date", torrent.date},
          {"size", torrent.size},
          {"up", torrent.up},
          {"down", torrent.down},
          {"isDownloaded", torrent.isDownloaded}};
}

struct Column {
  std::string_view before;
  bool isNumber = false;
  std::size_t width = 0;
};

using Row = std::array<std::string, 7>;

Row rowOf(std::size_t number, const Torrent& torrent) {
  return {std::to_string(number),  torrent.isDownloaded ? "*" : " ", printable(torrent.name),
          printable(torrent.size), printable(torrent.date),          printable(torrent.up),
          printable(torrent.down)};
}

// In characters; a byte that goes on with one is none.
std::size_t lengthOf(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(
      text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

void printColumns(const std::vector<Torrent>& torrents) {
  // What is longer sticks out: one endless name must not widen every line.
  constexpr std::size_t kWidest = 200;
  std::array<Column, 7> columns{
      {{"", true, 3}, {" "}, {" "}, {"  ", true}, {"  "}, {"  up ", true}, {"  down ", true}}};
  std::vector<Row> rows;
  for (const Torrent& torrent : torrents) {
    rows.push_back(rowOf(rows.size() + 1, torrent));
    for (std::size_t i = 0; i < columns.size(); ++i) {
      columns[i].width = std::max(columns[i].width, std::min(lengthOf(rows.back()[i]), kWidest));
    }
  }
  for (const Row& row : rows) {
    std::string line;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const Column& column = columns[i];
      const std::string blanks(column.width - std::min(lengthOf(row[i]), column.width), ' ');
      line.append(column.before);
      line += column.isNumber ? blanks + row[i] : row[i] + blanks;
    }
    fmt::print("{}\n", line);
  }
}

bool remember(const std::string& title, const std::vector<Torrent>& torrents) {
  std::vector<std::string> stored{title};
  for (std::size_t i = 0; i < std::min(torrents.size(), kRememberedRows); ++i) {
    stored.push_back(torrents[i].name);
    stored.push_back(torrents[i].downloadUrl);
  }
  Preferences& preferences = Preferences::sharedInstance();
  if (preferences.isPersistent() &&
      preferences.setArray(PreferencesKeys::terminalListing, stored)) {
    return true;
  }
  fail(kDone, "These rows were not remembered for send. " +
                  preferences.lastProblem().value_or("They could not be stored."));
  return false;
}

}  // namespace

int rememberAndPrint(const std::string& title, const std::vector<Torrent>& torrents, bool json) {
  // First: whoever reads may close the pipe after a few rows, and send must not mean older ones.
  const bool isRemembered = remember(title, torrents);
  if (json) {
    nlohmann::json rows = nlohmann::json::array();
    std::ranges::transform(torrents, std::back_inserter(rows), jsonOf);
    fmt::print("{}\n", jsonText(rows, 2));
  } else {
    printColumns(torrents);
  }
  return isRemembered ? kDone : kRefused;
}

std::optional<RememberedListing> lastListing() {
  const auto stored = Preferences::sharedInstance().array(PreferencesKeys::terminalListing);
  if (!stored || stored->size() % 2 == 0) {
    return std::nullopt;
  }
  RememberedListing listing{.title = stored->front(), .rows = {}};
  for (std::size_t i = 1; i < stored->size(); i += 2) {
    listing.rows.push_back({(*stored)[i], (*stored)[i + 1]});
  }
  return listing;
}

int noSuchRow(int page, int row, std::size_t rows) {
  return fail(kWrongUsage, rows == 0 ? fmt::format("Page {} has no rows.", page)
                                     : fmt::format("Page {} has no row {}; its rows are 1 to {}.",
                                                   page, row, rows));
}

int failWithoutSite() {
  return fail(kRefused, fmt::format("No site is set. Give --site-host, or set site-host in {}.",
                                    SiteConfiguration::defaultFile().string()));
}

bool isFailure(const std::optional<PageTrouble>& trouble) {
  return trouble && !trouble->mayBeEmptyList();
}

std::string reasonOf(const PageTrouble& trouble) {
  // A page that is none of the site's pages, or no text in UTF-8.
  return (isFailure(trouble) ? "" : "The answer cannot be read. ") + sentenceOf(trouble);
}

int failToLoad(const PageTrouble& trouble) {
  return SiteConfiguration::current().siteHost.empty() ? failWithoutSite()
                                                       : fail(kRefused, reasonOf(trouble));
}

}  // namespace veltramoor::cli
