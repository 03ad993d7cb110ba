#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include <QUrl>
#include <QUrlQuery>
#include <algorithm>
#include <charconv>

#include "Commands.h"
#include "Util/NSStringEscaping.h"
#include "platform/SiteConfiguration.h"
#include "remote/DownloadHistory.h"
#include "remote/FetchPageDownload.h"
#include "site/AnonymousUser.h"

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

struct SendArguments {
  /// A row number of `page`, or a magnet link.
  std::string what;
  std::optional<std::string> name;
  int page = 0;
};

std::shared_ptr<AllListViewController> recentList() {
  becomeAnonymous();
  return std::make_shared<AllListViewController>(TableViewStyle::Plain);
}

bool load(Terminal& terminal, AllListViewController& list, int page) {
  return terminal.wait([&](const std::function<void(bool)>& done) {
    QObject::connect(&list, &AllListViewController::pageLoaded, &list, done,
                     Qt::SingleShotConnection);
    list.fetchPage(page);
  });
}

int failToLoad() {
  const std::string& host = SiteConfiguration::current().siteHost;
  return fail(kRefused,
              host.empty()
                  ? fmt::format("No site is set. Give --site-host, or set site-host in {}.",
                                SiteConfiguration::defaultFile().string())
                  : fmt::format("The site {} did not answer. Check the connection.", host));
}

std::optional<int> rowNumber(const std::string& text) {
  int row = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), row);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(row)
                                                                  : std::nullopt;
}

// The link's own display name, or the link.
std::string nameOfMagnet(const std::string& magnet) {
  // In a link's query a plus stands for a blank.
  const QUrlQuery query(
      QUrl(QString::fromStdString(magnet).replace(QLatin1Char('+'), QStringLiteral("%20"))));
  const QString name = query.queryItemValue(QStringLiteral("dn"), QUrl::FullyDecoded);
  return name.isEmpty() ? magnet : name.toStdString();
}

int reportSend(const Terminal& terminal, bool sent, const std::string& name, bool json) {
  if (!sent) {
    return fail(kRefused, terminal.alertText().value_or("The torrent could not be sent."));
  }
  if (terminal.alertText()) {
    fail(kDone, *terminal.alertText());
  }
  if (json) {
    fmt::print("{}\n", jsonText(nlohmann::json{{"sent", name}}));
  } else {
    fmt::print("Sent {}\n", printable(name));
  }
  return kDone;
}

int sendRow(Terminal& terminal, int row, const SendArguments& arguments, bool json) {
  const auto list = recentList();
  if (!load(terminal, *list, arguments.page)) {
    return failToLoad();
  }
  const auto& torrents = *list->rows()->torrents();
  if (row < 1 || row > static_cast<int>(torrents.size())) {
    return fail(kWrongUsage, fmt::format("Page {} has no row {}; its rows are 1 to {}.",
                                         arguments.page, row, torrents.size()));
  }
  const std::string name = torrents[static_cast<std::size_t>(row) - 1].name;
  const bool sent = terminal.wait([&](const std::function<void(bool)>& done) {
    QObject::connect(list.get(), &AllListViewController::sendFinished, list.get(), done,
                     Qt::SingleShotConnection);
    list->didTapDownloadButton(row - 1);
  });
  return reportSend(terminal, sent, name, json);
}

int sendMagnet(Terminal& terminal, const SendArguments& arguments, bool json) {
  const std::string link = stringByAddingPercentEscapes(arguments.what);
  const std::string name = arguments.name.value_or(nameOfMagnet(arguments.what));
  OperationQueue queue(1);
  const bool sent = terminal.wait([&](const std::function<void(bool)>& done) {
    queue.addOperation(std::make_shared<FetchPageDownload>(
        Url::parse(link), name,
        [done](const std::optional<std::string>& accepted) { done(accepted.has_value()); }));
  });
  return reportSend(terminal, sent, name, json);
}

int recent(Terminal& terminal, int page, bool json) {
  const auto list = recentList();
  if (!load(terminal, *list, page)) {
    return failToLoad();
  }
  const auto& torrents = *list->rows()->torrents();
  if (json) {
    nlohmann::json rows = nlohmann::json::array();
    std::ranges::transform(torrents, std::back_inserter(rows), jsonOf);
    fmt::print("{}\n", jsonText(rows, 2));
    return kDone;
  }
  int row = 0;
  for (const Torrent& torrent : torrents) {
    fmt::print("{:3} {} {}  {}  {}  up {}  down {}\n", ++row, torrent.isDownloaded ? '*' : ' ',
               printable(torrent.name), printable(torrent.size), printable(torrent.date),
               printable(torrent.up), printable(torrent.down));
  }
  return kDone;
}

int send(Terminal& terminal, const SendArguments& arguments, bool json) {
  if (const std::optional<int> row = rowNumber(arguments.what)) {
    return sendRow(terminal, *row, arguments, json);
  }
  if (!arguments.what.starts_with("magnet:")) {
    return fail(kWrongUsage, "send takes a row number or a magnet link.");
  }
  return sendMagnet(terminal, arguments, json);
}

int history(bool json) {
  std::vector<std::string> names = DownloadHistory::names();
  std::ranges::reverse(names);
  if (json) {
    fmt::print("{}\n", jsonText(names, 2));
    return kDone;
  }
  for (const std::string& name : names) {
    fmt::print("{}\n", printable(name));
  }
  return kDone;
}

}  // namespace

void addListCommands(CLI::App& app, Commands& commands) {
  CLI::App* listing = app.add_subcommand("recent", "List a page of the most recent torrents");
  const auto page = std::make_shared<int>(0);
  listing->add_option("--page", *page, "Page number, from 0")->check(CLI::Range(0, 1000000));
  commands.push_back(
      {listing, [page](Terminal& terminal, bool json) { return recent(terminal, *page, json); }});

  CLI::App* sending = app.add_subcommand("send", "Push a torrent to your BitTorrent client");
  const auto arguments = std::make_shared<SendArguments>();
  sending
      ->add_option("what", arguments->what,
                   "Row number (from 1) of a recent page, or a magnet link")
      ->required()
      ->check(utf8());
  sending->add_option("--name", arguments->name, "Name to remember a magnet link by")
      ->check(utf8());
  sending->add_option("--page", arguments->page, "Page of the row, from 0")
      ->check(CLI::Range(0, 1000000));
  commands.push_back({sending, [arguments](Terminal& terminal, bool json) {
                        return send(terminal, *arguments, json);
                      }});

  commands.push_back({app.add_subcommand("history", "List what was sent, newest first"),
                      [](Terminal&, bool json) { return history(json); }});
}

}  // namespace veltramoor::cli
