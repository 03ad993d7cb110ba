#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include <chrono>
#include <memory>
#include <sstream>

#include "Commands.h"
#include "ListOutput.h"
#include "PageFetch.h"
#include "PageText.h"
#include "TimeLimit.h"
#include "lists/listings/RecentListing.h"
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
  const auto torrents = fetchRows(RecentListing().pageUrl(arguments.page));
  if (!torrents) {
    return failToLoad();
  }
  if (arguments.row < 1 || arguments.row > static_cast<int>(torrents->size())) {
    return noSuchRow(arguments.page, arguments.row, torrents->size());
  }
  const Torrent& torrent = (*torrents)[static_cast<std::size_t>(arguments.row) - 1];
  HttpRequestRegExDetails request(SiteConfiguration::current().siteUrl(torrent.detailsUrl));
  request.request();
  if (!request.isResponseValid() || !request.result()) {
    return failToLoad();
  }
  const PageText page = layOut(*request.result());
  if (json) {
    nlohmann::json answer = {{"name", torrent.name},
                             {"detailsUrl", torrent.detailsUrl},
                             {"text", page.text},
                             {"truncated", page.isCut},
                             {"imdb", nullptr}};
    if (request.imdb()) {
      answer["imdb"] = *request.imdb();
    }
    fmt::print("{}\n", jsonText(answer, 2));
    return kDone;
  }
  std::istringstream lines(page.text);
  for (std::string line; std::getline(lines, line);) {
    fmt::print("{}\n", printable(line));
  }
  if (page.isCut) {
    fail(kDone, "The page goes on; it is cut here.");
  }
  if (request.imdb()) {
    fmt::print("Movie database: {}\n", printable(*request.imdb()));
  }
  return kDone;
}

}  // namespace

void addDetailsCommands(CLI::App& app, Commands& commands) {
  CLI::App* command = app.add_subcommand("details", "Read a torrent's page");
  const auto arguments = std::make_shared<DetailsArguments>();
  command->add_option("row", arguments->row, "Row number (from 1) of a recent page")->required();
  command->add_option("--page", arguments->page, "Page of the row, from 0")
      ->check(CLI::Range(0, 1000000));
  commands.push_back(
      {command, [arguments](Terminal&, bool json) { return details(*arguments, json); }});
}

}  // namespace veltramoor::cli
