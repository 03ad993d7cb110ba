#include <algorithm>
#include <array>

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

void applyOptions(Listing& listing, const ListArguments& arguments) {
  const ListingKeys& keys = listing.keys();
  const std::array options = {std::pair(keys.category, &arguments.category),
                              std::pair(keys.order, &arguments.order),
                              std::pair(keys.sort, &arguments.sort)};
  for (const auto& [key, option] : options) {
    if (*option) {
      listing.overrideSetting(key, **option);
    }
  }
}

/// Fetches the pages asked for and prints what came.
int print(Listing& listing, const ListArguments& arguments, bool json) {
  applyOptions(listing, arguments);
  const FetchedPages fetched = fetchPages(listing, arguments.page, arguments.pages);
  if (fetched.rows) {
    printRows(*fetched.rows, json);
  }
  return fetched.complete ? kDone : failToLoad();
}

int recent(const ListArguments& arguments, bool json) {
  RecentListing listing;
  return print(listing, arguments, json);
}

int search(const ListArguments& arguments, bool json) {
  SearchListing listing;
  listing.search(arguments.query);
  if (!listing.searchString()) {
    fail(kDone, "The site can be asked in ASCII only; it is asked for \"(null)\".");
  }
  return print(listing, arguments, json);
}

int top(const ListArguments& arguments, bool json) {
  Top100Listing listing;
  return print(listing, arguments, json);
}

/// Whom the cookies of an earlier run sign in. False when the site did not answer.
bool readUserInfo() {
  const auto cookies = CookieStorage::sharedInstance().cookies();
  if (std::ranges::none_of(cookies, [](const Cookie& cookie) { return cookie.name == "uid"; })) {
    return true;
  }
  HttpRequest settings(SiteConfiguration::current().siteUrl("/settings"));
  settings.request();
  HttpRequestRegExUserInfo user;
  user.setResponseData(settings.responseData());
  user.request();
  return settings.isResponseValid();
}

int uploads(const ListArguments& arguments, bool json) {
  if (!readUserInfo()) {
    return failToLoad();
  }
  if (UserInfo::sharedInstance().username() == "Anonymous") {
    fail(kDone, "Nobody is signed in.");
  }
  UploadListing listing;
  return print(listing, arguments, json);
}

std::vector<std::string> categoryCodes() {
  std::vector<std::string> codes;
  for (const CategoryGroup& group : categoryTable()) {
    for (const SettingChoice& member : group.members) {
      codes.emplace_back(member.code);
    }
  }
  return codes;
}

/// Makes `option` take a choice's code or, in any case of letters, its name.
void offer(CLI::Option* option, const std::vector<SettingChoice>& choices) {
  std::map<std::string, std::string> codes;
  std::string names;
  for (const SettingChoice& choice : choices) {
    codes.emplace(choice.name, choice.code);
    names += (names.empty() ? "" : ", ") + CLI::detail::to_lower(std::string(choice.name));
  }
  option->transform(CLI::CheckedTransformer(codes, CLI::ignore_case).description(""));
  option->description(option->get_description() + ": " + names + ", or the site's code");
}

using Run = int (*)(const ListArguments& arguments, bool json);

CLI::App* addList(CLI::App& app, Commands& commands, const char* name, const char* what,
                  const ListingKeys& keys, Run run,
                  const std::shared_ptr<ListArguments>& arguments) {
  CLI::App* command = app.add_subcommand(name, what);
  if (!keys.category.empty()) {
    command
        ->add_option("--category", arguments->category,
                     "Category code of the site, 0 for all, instead of the stored one")
        ->check(CLI::IsMember(categoryCodes()).description(""));
  }
  if (!keys.order.empty()) {
    offer(command->add_option("--order", arguments->order, "Instead of the stored order"),
          orderTable());
    offer(command->add_option("--sort", arguments->sort, "Instead of the stored direction"),
          sortTable());
    command->add_option("--page", arguments->page, "First page, from 0")
        ->check(CLI::Range(0, 1000000));
    command->add_option("--pages", arguments->pages, "How many pages")->check(CLI::Range(1, 1000));
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
  addList(app, commands, "recent", "List the most recent torrents, in a category by your order",
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
