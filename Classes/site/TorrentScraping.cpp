#include "site/TorrentScraping.h"

#include <algorithm>

#include "Util/GTMNSStringHTMLAdditions.h"
#include "Util/NSStringEscaping.h"
#include "regex/RegexKitLiteAdditions.h"

namespace veltramoor {

const std::string_view kTorrentRowRegex =
    R"rx(<tr[\s\S]*?<td[\s\S]*?href=".*?/browse/(\d*?)")rx"
    R"rx([\s\S]*?<td[\s\S]*?href="(.*?/torrent/.*?)".*?>(.*?)</a>)rx"
    R"rx([\s\S]*?href="(.*?magnet.*?)")rx"
    R"rx([\s\S]*?Uploaded (.*?), Size (.*?),)rx"
    R"rx([\s\S]*?<td.*?>(.*?)</td>[\s\S]*?<td.*?>(.*?)</td>)rx";

namespace {

void removeAll(std::string& text, std::string_view piece) {
  for (auto at = text.find(piece); at != std::string::npos; at = text.find(piece, at)) {
    text.erase(at, piece.size());
  }
}

Torrent torrentFromCaptures(std::vector<std::string>& captures,
                            const std::vector<std::string>& history) {
  Torrent torrent;
  torrent.type = std::move(captures[1]) + ".png";
  torrent.detailsUrl = std::move(captures[2]);
  torrent.name = gtm_stringByUnescapingFromHTML(captures[3]);
  torrent.downloadUrl = stringByAddingPercentEscapes(captures[4]);
  torrent.date = gtm_stringByUnescapingFromHTML(captures[5]);
  removeAll(torrent.date, "<b>");
  removeAll(torrent.date, "</b>");
  torrent.size = gtm_stringByUnescapingFromHTML(captures[6]);
  torrent.up = std::move(captures[7]);
  torrent.down = std::move(captures[8]);
  torrent.isDownloaded = std::find(history.begin(), history.end(), torrent.name) != history.end();
  return torrent;
}

}  // namespace

std::vector<Torrent> torrentsInPage(std::string_view page,
                                    const std::vector<std::string>& history) {
  auto rows = arrayOfCaptureComponentsMatchedByRegex(page, kTorrentRowRegex);
  std::vector<Torrent> torrents;
  torrents.reserve(rows.size());
  for (auto& captures : rows) {
    torrents.push_back(torrentFromCaptures(captures, history));
  }
  return torrents;
}

}  // namespace veltramoor
