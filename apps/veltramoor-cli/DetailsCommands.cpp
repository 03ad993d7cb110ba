#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include <QString>
#include <QTextDocumentFragment>
#include <memory>
#include <sstream>

#include "Commands.h"
#include "platform/SiteConfiguration.h"
#include "site/AnonymousUser.h"
#include "site/HttpRequestRegExDetails.h"

namespace veltramoor::cli {
namespace {

struct DetailsArguments {
  int row = 0;
  int page = 0;
};

int failToReachSite() {
  const std::string& host = SiteConfiguration::current().siteHost;
  return fail(kRefused,
              host.empty()
                  ? std::string("No site is set. Give --site-host.")
                  : fmt::format("The site {} did not answer. Check the connection.", host));
}

// What a reader sees of the page.
std::string textOf(const std::string& html) {
  return QTextDocumentFragment::fromHtml(QString::fromStdString(html))
      .toPlainText()
      .trimmed()
      .toStdString();
}

int details(Terminal& terminal, const DetailsArguments& arguments, bool json) {
  becomeAnonymous();
  const auto list = std::make_shared<AllListViewController>(TableViewStyle::Plain);
  if (!terminal.wait([&](const std::function<void(bool)>& done) {
        QObject::connect(list.get(), &AllListViewController::pageLoaded, list.get(), done);
        list->fetchPage(arguments.page);
      })) {
    return failToReachSite();
  }
  const auto& torrents = *list->rows()->torrents();
  if (arguments.row < 1 || arguments.row > static_cast<int>(torrents.size())) {
    return fail(kWrongUsage, fmt::format("Page {} has no row {}; its rows are 1 to {}.",
                                         arguments.page, arguments.row, torrents.size()));
  }
  const Torrent& torrent = torrents[static_cast<std::size_t>(arguments.row) - 1];
  HttpRequestRegExDetails request(Url::parse(
      fmt::format("http://{}{}", SiteConfiguration::current().siteHost, torrent.detailsUrl)));
  request.request();
  if (!request.isResponseValid() || !request.result()) {
    return failToReachSite();
  }
  const std::string text = textOf(*request.result());
  if (json) {
    nlohmann::json answer = {{"name", torrent.name},
                             {"detailsUrl", torrent.detailsUrl},
                             {"text", text},
                             {"imdb", nullptr}};
    if (request.imdb()) {
      answer["imdb"] = *request.imdb();
    }
    fmt::print("{}\n", jsonText(answer, 2));
    return kDone;
  }
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    fmt::print("{}\n", printable(line));
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
  commands.push_back({command, [arguments](Terminal& terminal, bool json) {
                        return details(terminal, *arguments, json);
                      }});
}

}  // namespace veltramoor::cli
