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

int failToLoad() {
  const std::string& host = SiteConfiguration::current().siteHost;
  return fail(kRefused,
              host.empty()
                  ? fmt::format("No site is set. Give --site-host, or set site-host in {}.",
                                SiteConfiguration::defaultFile().string())
                  : fmt::format("The site {} did not answer. Check the connection.", host));
}

}  // namespace veltramoor::cli
