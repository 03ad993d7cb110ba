#include "ListOutput.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>

#include "Terminal.h"
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

}  // namespace

void printRows(const std::vector<Torrent>& torrents, bool json) {
  if (json) {
    nlohmann::json rows = nlohmann::json::array();
    std::ranges::transform(torrents, std::back_inserter(rows), jsonOf);
    fmt::print("{}\n", jsonText(rows, 2));
    return;
  }
  if (torrents.empty()) {
    fail(kDone, "No torrents.");
  }
  int row = 0;
  for (const Torrent& torrent : torrents) {
    fmt::print("{:3} {} {}  {}  {}  up {}  down {}\n", ++row, torrent.isDownloaded ? '*' : ' ',
               printable(torrent.name), printable(torrent.size), printable(torrent.date),
               printable(torrent.up), printable(torrent.down));
  }
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

int failToLoad() {
  const std::string& host = SiteConfiguration::current().siteHost;
  return host.empty()
             ? failWithoutSite()
             : fail(kRefused,
                    fmt::format("The site {} did not answer. Check the connection.", host));
}

}  // namespace veltramoor::cli
