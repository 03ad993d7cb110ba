#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>

#include "Commands.h"
#include "ListOutput.h"
#include "PageFetch.h"
#include "Util/NSStringEscaping.h"
#include "Util/Utf.h"
#include "lists/listings/RecentListing.h"
#include "platform/Preferences.h"
#include "remote/DownloadHistory.h"
#include "remote/FetchPageDownload.h"
#include "site/AnonymousUser.h"

namespace veltramoor::cli {
namespace {

struct SendArguments {
  /// A row number of `page`, or a magnet link.
  std::string what;
  std::optional<std::string> name;
  int page = 0;
};

std::optional<int> rowNumber(const std::string& text) {
  int row = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), row);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(row)
                                                                  : std::nullopt;
}

// The link's own display name, or the link.
std::string nameOfMagnet(std::string_view magnet) {
  constexpr std::string_view kItem = "dn=";
  std::string_view query = magnet.substr(0, magnet.find('#'));
  query.remove_prefix(std::min(query.find('?'), query.size()));
  while (!query.empty()) {
    query.remove_prefix(1);
    const std::string_view item = query.substr(0, query.find('&'));
    if (item.starts_with(kItem)) {
      std::string name(item.substr(kItem.size()));
      // In a link's query a plus stands for a blank.
      std::ranges::replace(name, '+', ' ');
      name = stringByReplacingPercentEscapes(name);
      return name.empty() || !isValidUtf8(name) ? std::string(magnet) : name;
    }
    query.remove_prefix(item.size());
  }
  return std::string(magnet);
}

int reportSend(const Terminal& terminal, bool sent, const std::string& name, bool json) {
  if (!sent) {
    return fail(kRefused, terminal.alertText().value_or("The torrent could not be sent."));
  }
  if (terminal.alertText()) {
    fail(kDone, *terminal.alertText());
  }
  if (json) {
    fmt::print("{}\n", jsonText({{"sent", name}}));
  } else {
    fmt::print("Sent {}\n", printable(name));
  }
  return kDone;
}

int sendTo(Terminal& terminal, std::optional<Url> link, const std::string& name, bool json) {
  OperationQueue queue(1);
  const bool sent = terminal.wait([&](const std::function<void(bool)>& done) {
    queue.addOperation(std::make_shared<FetchPageDownload>(
        std::move(link), name,
        [done](const std::optional<std::string>& accepted) { done(accepted.has_value()); }));
  });
  return reportSend(terminal, sent, name, json);
}

int sendRow(Terminal& terminal, int row, const SendArguments& arguments, bool json) {
  becomeAnonymous();
  const auto torrents = fetchRows(RecentListing().pageUrl(arguments.page));
  if (!torrents) {
    return failToLoad();
  }
  if (row < 1 || row > static_cast<int>(torrents->size())) {
    return noSuchRow(arguments.page, row, torrents->size());
  }
  const Torrent& torrent = (*torrents)[static_cast<std::size_t>(row) - 1];
  return sendTo(terminal, Url::parse(torrent.downloadUrl), torrent.name, json);
}

int sendMagnet(Terminal& terminal, const SendArguments& arguments, bool json) {
  return sendTo(terminal, Url::parse(stringByAddingPercentEscapes(arguments.what)),
                arguments.name.value_or(nameOfMagnet(arguments.what)), json);
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

int deleteFromHistory(const std::vector<std::string>& newestFirst, std::size_t row, bool json) {
  if (row > newestFirst.size()) {
    return fail(kWrongUsage, fmt::format("The history has no row {}.", row));
  }
  if (!DownloadHistory::removeAt(newestFirst.size() - row)) {
    return fail(kRefused, Preferences::sharedInstance().lastProblem().value_or("Not deleted."));
  }
  const std::string& name = newestFirst[row - 1];
  if (json) {
    fmt::print("{}\n", jsonText({{"deleted", name}}));
  } else {
    fmt::print("Deleted {}\n", printable(name));
  }
  return kDone;
}

int history(const std::optional<std::size_t>& deleted, bool json) {
  std::vector<std::string> names = DownloadHistory::names();
  std::ranges::reverse(names);
  if (deleted) {
    return deleteFromHistory(names, *deleted, json);
  }
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

void addSendCommands(CLI::App& app, Commands& commands) {
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

  CLI::App* sent = app.add_subcommand("history", "List what was sent, newest first");
  const auto deleted = std::make_shared<std::optional<std::size_t>>();
  sent->add_option("--delete", *deleted, "Delete this entry instead, counted from 1, the newest")
      ->check(CLI::Range(1, 1000000));
  commands.push_back({sent, [deleted](Terminal&, bool json) { return history(*deleted, json); }});
}

}  // namespace veltramoor::cli
