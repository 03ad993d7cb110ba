// A page of the site as a listing's rows stand in it, written once for all tests of screens.
#pragma once

#include <string>
#include <vector>

namespace veltramoor::test {

/// A row for each name, which may hold markup; all lead to "/torrent/1/a" and to `magnet`.
inline std::string listingPage(const std::vector<std::string>& names,
                               const std::string& magnet = "magnet:?a") {
  std::string page = "<table>";
  for (const std::string& name : names) {
    page += "<tr><td href=\"/browse/303\"><td href=\"/torrent/1/a\">" + name + "</a>href=\"" +
            magnet + "\" Uploaded today, Size 1 KiB,<td>1</td><td>2</td></tr>\n";
  }
  return page + "</table>";
}

}  // namespace veltramoor::test
