#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "ArgumentChecks.h"
#include "Commands.h"
#include "ListOutput.h"
#include "PageFetch.h"
#include "lists/listings/RecentListing.h"
#include "lists/listings/SearchListing.h"
#include "lists/listings/SiteCodes.h"
#include "lists/listings/Top100Listing.h"
#include "lists/listings/UploadListing.h"
#include "platform/CookieStorage.h"
#include "platform/SiteConfiguration.h"
#include "site/AnonymousUser.h"
#include "site/HttpRequestRegExUserInfo.h"
#include "site/UserInfo.h"

namespace veltramoor::cli {
namespace {

struct ListArguments {
  std::optional<std::string> category;
  std::optional<std::string> order;
  std::optional<std::string> sort;
  std::string query;
  int page = 0;
  int pages = 1;
};

/// Has `listing` go by the options alone: the window's settings are the window's.
void applyOptions(Listing& listing, const ListArguments& arguments) {
  const ListingKeys& keys = listing.keys();
  const std::array settings = {
      std::pair(keys.category, arguments.category.value_or("0")),
      std::pair(keys.order, arguments.order.value_or(std::string(orderTable().front().code))),
      std::pair(keys.sort, arguments.sort.value_or(std::string(sortTable().front().code)))};
  for (const auto& [key, value] : settings) {
    if (!key.empty()) {
      listing.overrideSetting(key, value);
    }
  }
}

/// The listing in words, for whoever sends from it later.
std::string titleOf(std::string title, const ListArguments& arguments) {
  if (arguments.category.value_or("0") != "0") {
    title += ", category " + *arguments.category;
  }
  return arguments.page > 0 ? fmt::format("{}, from page {}", title, arguments.page) : title;
}

/// Fetches the pages asked for, prints and remembers what came, and says why it is not all.
int print(Listing& listing, const std::string& name, const ListArguments& arguments, bool json) {
  applyOptions(listing, arguments);
  const FetchedPages fetched = fetchPages(listing, arguments.page, arguments.pages);
  if (fetched.hasFailed && fetched.rows.empty()) {
    return failToLoad(*fetched.trouble);
  }
  const int status = rememberAndPrint(titleOf(name, arguments), fetched.rows, json);
  if (fetched.hasFailed) {
    return fail(kRefused, fmt::format("Page {} did not come. {}", fetched.lastPage,
                                      reasonOf(*fetched.trouble)));
  }
  if (fetched.rows.empty()) {
    fail(kDone, "No torrents. " + sentenceOf(*fetched.trouble));
  }
  return status;
}

int recent(const ListArguments& arguments, bool json) {
  if (arguments.category.value_or("0") == "0" && (arguments.order || arguments.sort)) {
    fail(kDone, "The site lists all categories by date only; give --category to order one.");
  }
  RecentListing listing;
  return print(listing, "recent", arguments, json);
}

int search(const ListArguments& arguments, bool json) {
  SearchListing listing;
  listing.search(arguments.query);
  if (!listing.searchString()) {
    fail(kDone, "The site can be asked in ASCII only; it is asked for \"(null)\".");
  }
  return print(listing, fmt::format("search \"{}\"", arguments.query), arguments, json);
}

int top(const ListArguments& arguments, bool json) {
  Top100Listing listing;
  return print(listing, "top", arguments, json);
}

/// Whom the cookies of an earlier run sign in; or why that cannot be said.
std::optional<PageTrouble> readUserInfo() {
  const auto cookies = CookieStorage::sharedInstance().cookies();
  if (std::ranges::none_of(cookies, [](const Cookie& cookie) { return cookie.name == "uid"; })) {
    return std::nullopt;
  }
  HttpRequest settings(SiteConfiguration::current().siteUrl("/settings"));
  settings.request();
  HttpRequestRegExUserInfo user;
  user.setResponseData(settings.responseData());
  user.request();
  return settings.isResponseValid() ? std::nullopt : std::optional(troubleOf(settings));
}

int uploads(const ListArguments& arguments, bool json) {
  if (const auto trouble = readUserInfo()) {
    return failToLoad(*trouble);
  }
  if (UserInfo::sharedInstance().username() == "Anonymous") {
    fail(kDone, "Nobody is signed in.");
  }
  UploadListing listing;
  return print(listing, "uploads", arguments, json);
}

using Run = int (*)(const ListArguments& arguments, bool json);

CLI::App* addList(CLI::App& app, Commands& commands, const char* name, const char* what,
                  const ListingKeys& keys, Run run,
                  const std::shared_ptr<ListArguments>& arguments) {
  CLI::App* command = app.add_subcommand(name, what);
  if (!keys.category.empty()) {
    command
        ->add_option("--category", arguments->category,
                     "Category code of the site; all, when none is given")
        ->check(categoryCodes());
  }
  if (!keys.order.empty()) {
    command
        ->add_option("--order", arguments->order,
                     "date, when none is given, size, seeders, leechers, or the site's code")
        ->transform(oneOf(orderTable()));
    command->add_option("--sort", arguments->sort, "desc, when none is given, or asc")
        ->transform(oneOf(sortTable()));
    command->add_option("--page", arguments->page, "First page, from 0")->transform(pageNumbers());
    command->add_option("--pages", arguments->pages, "How many pages")
        ->transform(wholeNumbers(1, 1000));
  }
  commands.push_back({command, [run, arguments](Terminal&, bool json) {
                        becomeAnonymous();
                        return run(*arguments, json);
                      }});
  return command;
}

}  // namespace

void addListCommands(CLI::App& app, Commands& commands) {
  const auto fresh = [] { return std::make_shared<ListArguments>(); };
  addList(app, commands, "recent", "List the most recent torrents, of a category in any order",
          RecentListing().keys(), recent, fresh());
  const auto query = fresh();
  addList(app, commands, "search", "List what the site finds", SearchListing().keys(), search,
          query)
      ->add_option("query", query->query, "What to look for")
      ->check(utf8())
      ->required();
  addList(app, commands, "top", "List the 100 torrents with the most seeders",
          Top100Listing().keys(), top, fresh());
  addList(app, commands, "uploads", "List your uploads", UploadListing().keys(), uploads, fresh());
}

}  // namespace veltramoor::cli
