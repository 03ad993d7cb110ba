#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include <chrono>
#include <memory>
#include <sstream>

#include "ArgumentChecks.h"
#include "CommandTable.h"
#include "ListOutput.h"
#include "PageFetch.h"
#include "PageText.h"
#include "TimeLimit.h"
#include "platform/SiteConfiguration.h"
#include "site/AnonymousUser.h"
#include "site/HttpRequestRegExDetails.h"

namespace veltramoor::cli {
namespace {

struct DetailsArguments {
  int row = 0;
  int page = 0;
};

PageText layOut(const std::string& html) {
  const TimeLimit limit(std::chrono::seconds(10), "The page takes too long to be laid out.");
  return textOfPage(html);
}

int details(const DetailsArguments& arguments, bool json) {
  becomeAnonymous();
  const FetchedRows page = fetchRecentPage(arguments.page);
  if (page.hasFailed()) {
    return failToLoad(*page.trouble);
  }
  if (arguments.row > static_cast<int>(page.rows->size())) {
    return noSuchRow(arguments.page, arguments.row, page.rows->size());
  }
  const Torrent& torrent = (*page.rows)[static_cast<std::size_t>(arguments.row) - 1];
  HttpRequestRegExDetails request(SiteConfiguration::current().siteUrl(torrent.detailsUrl));
  request.request();
  if (!request.isResponseValid() || !request.result()) {
    return failToLoad(troubleOf(request));
  }
  const PageText text = layOut(*request.result());
  if (json) {
    nlohmann::json answer = {{"name", torrent.name},
                             {"detailsUrl", torrent.detailsUrl},
                             {"text", text.text},
                             {"truncated", text.isCut},
                             {"imdb", nullptr}};
    if (request.imdb()) {
      answer["imdb"] = *request.imdb();
    }
    fmt::print("{}\n", jsonText(answer, 2));
    return kDone;
  }
  std::istringstream lines(text.text);
  for (std::string line; std::getline(lines, line);) {
    fmt::print("{}\n", printable(line));
  }
  if (text.isCut) {
    fail(kDone, "The page goes on; it is cut here.");
  }
  if (request.imdb()) {
    fmt::print("Movie database: {}\n", printable(*request.imdb()));
  }
  return kDone;
}

}  // namespace

Commands detailsCommands() {
  const auto arguments = std::make_shared<DetailsArguments>();
  return {{"details",
           "Read a torrent's page",
           {{"row", "Row number (from 1) of a recent page", into(arguments, &DetailsArguments::row),
             rowNumbers(), Argument::Kind::Required},
            {"--page", "Page of the row, from 0", into(arguments, &DetailsArguments::page),
             pageNumbers()}},
           [arguments](Terminal&, bool json) { return details(*arguments, json); }}};
}

}  // namespace veltramoor::cli
