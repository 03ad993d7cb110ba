#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "Commands.h"
#include "ListOutput.h"
#include "PreferencesKeys.h"
#include "Util/NSStringEscaping.h"
#include "lists/SearchListViewController.h"
#include "lists/Top100ListViewController.h"
#include "lists/UploadListViewController.h"
#include "platform/CookieStorage.h"
#include "platform/SiteConfiguration.h"
#include "settings/DisplaySettingsTables.h"
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

/// The keys of the settings that a list's options stand for; empty: the list has no such option.
struct ListKeys {
  std::string_view category;
  std::string_view order;
  std::string_view sort;
};

constexpr ListKeys kRecent{PreferencesKeys::recentCategory, PreferencesKeys::recentOrderBy,
                           PreferencesKeys::recentSortBy};
constexpr ListKeys kSearch{PreferencesKeys::searchCategory, PreferencesKeys::searchOrderBy,
                           PreferencesKeys::searchSortBy};
constexpr ListKeys kTop100{PreferencesKeys::top100Category, {}, {}};
constexpr ListKeys kUploads{{}, PreferencesKeys::uploadOrderBy, PreferencesKeys::uploadSortBy};

void applyOptions(AllListViewController& list, const ListKeys& keys,
                  const ListArguments& arguments) {
  const std::array options = {std::pair(keys.category, &arguments.category),
                              std::pair(keys.order, &arguments.order),
                              std::pair(keys.sort, &arguments.sort)};
  for (const auto& [key, option] : options) {
    if (*option) {
      list.overrideSetting(key, **option);
    }
  }
}

using Fetch = std::function<void(int page)>;

/// Fetches the pages asked for, one after another, up to the list's end, and prints what came.
int printPages(Terminal& terminal, AllListViewController& list, const ListArguments& arguments,
               bool json, const Fetch& fetch) {
  bool arrived = true;
  for (int i = 0; i < arguments.pages && arrived && (i == 0 || !list.noMoreTorrents()); ++i) {
    arrived = terminal.wait([&](const std::function<void(bool)>& done) {
      QObject::connect(&list, &AllListViewController::pageLoaded, &list, done,
                       Qt::SingleShotConnection);
      fetch(arguments.page + i);
    });
  }
  if (const auto& torrents = list.rows()->torrents()) {
    printRows(*torrents, json);
  }
  return arrived ? kDone : failToLoad();
}

int printPages(Terminal& terminal, AllListViewController& list, const ListArguments& arguments,
               bool json) {
  return printPages(terminal, list, arguments, json, [&list](int page) { list.fetchPage(page); });
}

int recent(Terminal& terminal, const ListArguments& arguments, bool json) {
  const auto list = std::make_shared<AllListViewController>(TableViewStyle::Plain);
  applyOptions(*list, kRecent, arguments);
  return printPages(terminal, *list, arguments, json);
}

int search(Terminal& terminal, const ListArguments& arguments, bool json) {
  const auto list = std::make_shared<SearchListViewController>(TableViewStyle::Plain);
  applyOptions(*list, kSearch, arguments);
  list->setSearchString(stringByAddingPercentEscapesInAscii(arguments.query));
  if (!list->searchString()) {
    fail(kDone, "The site can be asked in ASCII only; it is asked for \"(null)\".");
  }
  return printPages(terminal, *list, arguments, json);
}

int top(Terminal& terminal, const ListArguments& arguments, bool json) {
  const auto list = std::make_shared<Top100ListViewController>(TableViewStyle::Plain);
  applyOptions(*list, kTop100, arguments);
  return printPages(terminal, *list, arguments, json, [&list](int) { list->fetchTop100List(); });
}

/// Whom the cookies of an earlier run sign in. False when the site did not answer.
bool readUserInfo() {
  const auto cookies = CookieStorage::sharedInstance().cookies();
  if (std::ranges::none_of(cookies, [](const Cookie& cookie) { return cookie.name == "uid"; })) {
    return true;
  }
  HttpRequest settings(
      Url::parse(fmt::format("http://{}/settings", SiteConfiguration::current().siteHost)));
  settings.request();
  HttpRequestRegExUserInfo user;
  user.setResponseData(settings.responseData());
  user.request();
  return settings.isResponseValid();
}

int uploads(Terminal& terminal, const ListArguments& arguments, bool json) {
  if (!readUserInfo()) {
    return failToLoad();
  }
  if (UserInfo::sharedInstance().username() == "Anonymous") {
    fail(kDone, "Nobody is signed in.");
  }
  const auto list = std::make_shared<UploadListViewController>(TableViewStyle::Plain);
  applyOptions(*list, kUploads, arguments);
  return printPages(terminal, *list, arguments, json);
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

using Run = int (*)(Terminal& terminal, const ListArguments& arguments, bool json);

CLI::App* addList(CLI::App& app, Commands& commands, const char* name, const char* what,
                  const ListKeys& keys, Run run, const std::shared_ptr<ListArguments>& arguments) {
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
  commands.push_back({command, [run, arguments](Terminal& terminal, bool json) {
                        becomeAnonymous();
                        return run(terminal, *arguments, json);
                      }});
  return command;
}

}  // namespace

void addListCommands(CLI::App& app, Commands& commands) {
  const auto fresh = [] { return std::make_shared<ListArguments>(); };
  addList(app, commands, "recent", "List the most recent torrents, in a category by your order",
          kRecent, recent, fresh());
  const auto query = fresh();
  addList(app, commands, "search", "List what the site finds", kSearch, search, query)
      ->add_option("query", query->query, "What to look for")
      ->check(utf8())
      ->required();
  addList(app, commands, "top", "List the 100 torrents with the most seeders", kTop100, top,
          fresh());
  addList(app, commands, "uploads", "List your uploads", kUploads, uploads, fresh());
}

}  // namespace veltramoor::cli
