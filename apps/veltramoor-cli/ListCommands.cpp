#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "ArgumentChecks.h"
#include "CommandTable.h"
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

using SharedArguments = std::shared_ptr<ListArguments>;

/// A command over the listing that has `keys`; `more` are its own arguments.
Command listCommand(const char* name, const char* description, const ListingKeys& keys, Run run,
                    const SharedArguments& arguments = std::make_shared<ListArguments>(),
                    std::vector<Argument> more = {}) {
  std::vector<Argument> options = std::move(more);
  if (!keys.category.empty()) {
    options.push_back({"--category", "Category code of the site; all, when none is given",
                       into(arguments, &ListArguments::category), categoryCodes()});
  }
  if (!keys.order.empty()) {
    options.push_back({"--order",
                       "date, when none is given, size, seeders, leechers, or the site's code",
                       into(arguments, &ListArguments::order), oneOf(orderTable())});
    options.push_back({"--sort", "desc, when none is given, or asc",
                       into(arguments, &ListArguments::sort), oneOf(sortTable())});
    options.push_back(
        {"--page", "First page, from 0", into(arguments, &ListArguments::page), pageNumbers()});
    options.push_back({"--pages", "How many pages", into(arguments, &ListArguments::pages),
                       wholeNumbers(1, 1000)});
  }
  return {name, description, std::move(options), [run, arguments](Terminal&, bool json) {
            becomeAnonymous();
            return run(*arguments, json);
          }};
}

}  // namespace

Commands listCommands() {
  const auto query = std::make_shared<ListArguments>();
  return {listCommand("recent", "List the most recent torrents, of a category in any order",
                      RecentListing().keys(), recent),
          listCommand("search", "List what the site finds", SearchListing().keys(), search, query,
                      {{"query", "What to look for", into(query, &ListArguments::query), utf8(),
                        Argument::Kind::Required}}),
          listCommand("top", "List the 100 torrents with the most seeders", Top100Listing().keys(),
                      top),
          listCommand("uploads", "List your uploads", UploadListing().keys(), uploads)};
}

}  // namespace veltramoor::cli
