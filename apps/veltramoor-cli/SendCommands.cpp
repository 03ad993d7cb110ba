#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include <algorithm>

#include "ArgumentChecks.h"
#include "CommandTable.h"
#include "ListOutput.h"
#include "PageFetch.h"
#include "Util/NSStringEscaping.h"
#include "lists/listings/MagnetAddress.h"
#include "platform/Preferences.h"
#include "remote/BitClient.h"
#include "remote/DownloadHistory.h"
#include "remote/FetchPageDownload.h"
#include "remote/ServerInfo.h"
#include "site/AnonymousUser.h"
#include "site/MagnetName.h"

namespace veltramoor::cli {
namespace {

struct SendArguments {
  /// A row number, or a magnet link.
  std::string what;
  std::optional<std::string> name;
  /// The recent list's page that the row is on; absent: the last listing.
  std::optional<int> page;
};

struct HistoryArguments {
  /// The entry to delete, counted from 1, the newest.
  std::optional<int> deleted;
};

/// A torrent, and where it stood when that was a row.
struct Sending {
  std::optional<Url> link;
  std::string name;
  std::string origin = {};
};

// Whom a send may be waiting for: the client, and before it the server of a link to a file.
std::string peersOf(const Sending& sending) {
  const auto client = BitClient::configured(ServerInfo::sharedInstance());
  const std::optional<Url> url = client ? client->getUrl() : std::nullopt;
  if (!url) {
    return {};
  }
  const bool isIpv6 = url->host().find(':') != std::string::npos;
  const std::string peer =
      fmt::format("{}:{}", isIpv6 ? "[" + url->host() + "]" : url->host(), url->port());
  return sending.link && sending.link->isHttp()
             ? fmt::format("{} and {}", sending.link->host(), peer)
             : peer;
}

// What was sent is said even when it could not be remembered.
int reportSent(const Terminal& terminal, const Sending& sending, bool json) {
  if (json) {
    fmt::print("{}\n", jsonText({{"sent", sending.name}}));
  } else {
    fmt::print("Sent {}{}\n", printable(sending.name),
               sending.origin.empty() ? "" : " (" + printable(sending.origin) + ")");
  }
  if (terminal.alertText()) {
    return fail(kRefused, *terminal.alertText());
  }
  return Preferences::sharedInstance().isPersistent()
             ? kDone
             : fail(kRefused, "Sent, but not remembered. The settings file cannot be used.");
}

int sendTo(Terminal& terminal, const Sending& sending, bool json) {
  OperationQueue queue(1);
  std::optional<DiagnosisStep> failure;
  const bool sent = terminal.wait(
      [&](const std::function<void(bool)>& done) {
        queue.addOperation(std::make_shared<FetchPageDownload>(
            sending.link, sending.name,
            [&failure, done](const std::optional<std::string>& accepted,
                             std::optional<DiagnosisStep> reason) {
              failure = std::move(reason);
              done(accepted.has_value());
            }));
      },
      peersOf(sending));
  if (sent) {
    return reportSent(terminal, sending, json);
  }
  return fail(kRefused,
              failure ? failure->text : terminal.alertText().value_or("The torrent was not sent."));
}

int sendRecentRow(Terminal& terminal, int row, int number, bool json) {
  becomeAnonymous();
  const FetchedRows page = fetchRecentPage(number);
  if (page.hasFailed()) {
    return failToLoad(*page.trouble);
  }
  if (row > static_cast<int>(page.rows->size())) {
    return noSuchRow(number, row, page.rows->size());
  }
  const Torrent& torrent = (*page.rows)[static_cast<std::size_t>(row) - 1];
  return sendTo(terminal,
                {.link = sendAddress(torrent.downloadUrl),
                 .name = torrent.name,
                 .origin = fmt::format("row {} of recent, page {}", row, number)},
                json);
}

int sendListedRow(Terminal& terminal, int row, bool json) {
  const std::optional<RememberedListing> listing = lastListing();
  if (!listing) {
    return fail(kWrongUsage,
                "There is no listing yet that a row could be of. List first, with recent, search, "
                "top, uploads or favourites.");
  }
  const std::size_t rows = listing->rows.size();
  if (rows == 0) {
    return fail(kWrongUsage, fmt::format("The last listing ({}) has no rows.", listing->title));
  }
  if (row > static_cast<int>(rows)) {
    return fail(
        kWrongUsage,
        fmt::format("The last listing ({}) has no row {}; its rows are 1 to {}{}.", listing->title,
                    row, rows, rows == kRememberedRows ? ", for no more are remembered" : ""));
  }
  const RememberedListing::Row& chosen = listing->rows[static_cast<std::size_t>(row) - 1];
  return sendTo(terminal,
                {.link = sendAddress(chosen.downloadUrl),
                 .name = chosen.name,
                 .origin = fmt::format("row {} of {}", row, listing->title)},
                json);
}

int sendMagnet(Terminal& terminal, const SendArguments& arguments, bool json) {
  return sendTo(terminal,
                {.link = Url::parse(stringByAddingPercentEscapes(arguments.what)),
                 .name = arguments.name.value_or(nameOfMagnet(arguments.what))},
                json);
}

int send(Terminal& terminal, const SendArguments& arguments, bool json) {
  if (arguments.what.starts_with("magnet:")) {
    if (arguments.page) {
      return fail(kWrongUsage, "--page goes with a row number, not with a magnet link.");
    }
    return sendMagnet(terminal, arguments, json);
  }
  const std::optional<int> row = wholeNumber(arguments.what, 1, 1'000'000);
  if (!row) {
    return fail(kWrongUsage, "send takes a row number, from 1, or a magnet link.");
  }
  if (arguments.name) {
    return fail(kWrongUsage, "--name goes with a magnet link, not with a row number.");
  }
  return arguments.page ? sendRecentRow(terminal, *row, *arguments.page, json)
                        : sendListedRow(terminal, *row, json);
}

int deleteFromHistory(const std::vector<std::string>& newestFirst, std::size_t row, bool json) {
  if (row > newestFirst.size()) {
    return fail(kWrongUsage, fmt::format("The history has no row {}.", row));
  }
  const std::string& name = newestFirst[row - 1];
  if (!DownloadHistory::removeAt(newestFirst.size() - row, name)) {
    return failToKeep();
  }
  if (json) {
    fmt::print("{}\n", jsonText({{"deleted", name}}));
  } else {
    fmt::print("Deleted {}\n", printable(name));
  }
  return kDone;
}

int history(const std::optional<int>& deleted, bool json) {
  std::vector<std::string> names = DownloadHistory::names();
  std::ranges::reverse(names);
  if (deleted) {
    return deleteFromHistory(names, static_cast<std::size_t>(*deleted), json);
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

Commands sendCommands() {
  const auto arguments = std::make_shared<SendArguments>();
  const auto kept = std::make_shared<HistoryArguments>();
  return {{"send",
           "Push a torrent to your BitTorrent client",
           {{"torrent", "Row number of what was listed last, from 1, or a magnet link",
             into(arguments, &SendArguments::what), utf8(), Argument::Kind::Required},
            {"--name", "Name to remember a magnet link by", into(arguments, &SendArguments::name),
             utf8()},
            {"--page", "Take the row of this recent page instead, from 0",
             into(arguments, &SendArguments::page), pageNumbers()}},
           [arguments](Terminal& terminal, bool json) { return send(terminal, *arguments, json); }},
          {"history",
           "List what was sent, newest first",
           {{"--delete", "Delete this entry instead, counted from 1, the newest",
             into(kept, &HistoryArguments::deleted), rowNumbers()}},
           [kept](Terminal&, bool json) { return history(kept->deleted, json); }}};
}

}  // namespace veltramoor::cli
