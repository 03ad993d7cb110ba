#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>

#include "ArgumentChecks.h"
#include "Commands.h"
#include "ListOutput.h"
#include "lists/listings/FavoriteFetching.h"
#include "lists/listings/FilterStore.h"
#include "platform/Preferences.h"
#include "site/AnonymousUser.h"

namespace veltramoor::cli {
namespace {

struct FavoritesArguments {
  std::optional<std::string> category;
  int pages = 5;
};

// What stands between the person and a full list, a line each.
void explain(const FilterSet& filters, bool anyRow) {
  if (filters.empty()) {
    fail(kDone, "There are no filters; add one with: filters add REGEX");
    return;
  }
  for (const std::string& regex : filters.givenUp()) {
    fail(kDone, fmt::format("The filter \"{}\" was given up on: it takes too long.", regex));
  }
  if (filters.invalid().size() == filters.size()) {
    fail(kDone, "No filter is a valid expression; see: filters list");
  } else if (!anyRow && filters.givenUp().empty()) {
    fail(kDone, "No filter accepts a torrent of these pages.");
  }
}

int favorites(Terminal& terminal, const FavoritesArguments& arguments, bool json) {
  becomeAnonymous();
  FavoriteListing listing;
  listing.overrideSetting(listing.keys().category, arguments.category.value_or("0"));
  listing.setPages(arguments.pages);
  std::vector<Torrent> rows;
  std::function<void(bool)> end;
  FavoriteFetching fetching([&](FilteredPage page) {
    if (page.torrents) {
      std::ranges::move(acceptedTorrents(std::move(page)), std::back_inserter(rows));
    }
    if (fetching.outstanding() == 0) {
      end(fetching.failed() == 0);
    }
  });
  const bool isWhole = terminal.wait([&](const std::function<void(bool)>& done) {
    end = done;
    fetching.fetch(listing, listing.firstBatch(), nullptr);
  });
  if (fetching.failed() == fetching.asked()) {
    return failToLoad(fetching.trouble());
  }
  const int status = rememberAndPrint("favourites", rows, json);
  if (!isWhole) {
    fail(kRefused, fmt::format("{} of {} pages did not come. {}", fetching.failed(),
                               fetching.asked(), reasonOf(fetching.trouble())));
  }
  explain(*listing.filters(), !isWhole || !rows.empty());
  return isWhole ? status : kRefused;
}

nlohmann::json jsonOf(const Filter& filter) {
  const auto& problem = filter.problem();
  nlohmann::json object{{"regex", filter.regex()}, {"valid", !problem.has_value()}};
  if (problem) {
    object["problem"] = problem->reason;
    object["offset"] = problem->offset ? nlohmann::json(*problem->offset) : nlohmann::json();
  }
  return object;
}

int listFilters(bool json) {
  nlohmann::json array = nlohmann::json::array();
  int number = 0;
  for (const std::string& regex : FilterStore::regexes()) {
    const Filter filter(regex);
    if (json) {
      array.push_back(jsonOf(filter));
      continue;
    }
    fmt::print("{:3} {}\n", ++number, printable(regex));
    if (filter.problem()) {
      fmt::print("    accepts nothing: {}\n", filter.problem()->reason);
    }
  }
  if (json) {
    fmt::print("{}\n", jsonText(array, 2));
  }
  return kDone;
}

int addFilter(const std::string& regex, bool json) {
  const Filter filter(regex);
  if (const auto& problem = filter.problem()) {
    return fail(kWrongUsage, problem->offset ? fmt::format("At character {}: {}",
                                                           *problem->offset + 1, problem->reason)
                                             : problem->reason);
  }
  if (!Preferences::sharedInstance().isPersistent() || !FilterStore::append(regex)) {
    return failToKeep();
  }
  return json ? listFilters(true) : kDone;
}

int removeFilter(int number, bool json) {
  if (!Preferences::sharedInstance().isPersistent()) {
    return failToKeep();
  }
  const std::vector<std::string> regexes = FilterStore::regexes();
  const std::size_t count = regexes.size();
  if (static_cast<std::size_t>(number) > count) {
    return fail(kWrongUsage, count == 0 ? "There are no filters."
                                        : fmt::format("The filters are 1 to {}.", count));
  }
  const std::size_t index = static_cast<std::size_t>(number) - 1;
  if (!FilterStore::remove(index, regexes[index])) {
    return failToKeep();
  }
  return json ? listFilters(true) : kDone;
}

}  // namespace

void addFavoriteCommands(CLI::App& app, Commands& commands) {
  CLI::App* listing = app.add_subcommand("favourites", "List recent torrents that pass a filter");
  const auto arguments = std::make_shared<FavoritesArguments>();
  listing
      ->add_option("--category", arguments->category,
                   "Category code of the site; all, when none is given")
      ->check(categoryCodes());
  listing
      ->add_option("--pages", arguments->pages, "How many pages to look through; 5, when not given")
      ->transform(wholeNumbers(1, 500));
  commands.push_back({listing, [arguments](Terminal& terminal, bool json) {
                        return favorites(terminal, *arguments, json);
                      }});

  CLI::App* filters =
      app.add_subcommand("filters", "The favourite filters")->require_subcommand(0, 1);
  const auto regex = std::make_shared<std::string>();
  CLI::App* add = filters->add_subcommand("add", "Add a filter");
  add->add_option("REGEX", *regex, "Regular expression that wanted names match")
      ->required()
      ->check(utf8());
  const auto number = std::make_shared<int>();
  CLI::App* remove = filters->add_subcommand("remove", "Remove a filter");
  remove->add_option("N", *number, "Its number in the list")->required()->transform(rowNumbers());
  filters->add_subcommand("list", "List the filters");
  // The first command that was given is run: those beneath come before the one without any.
  commands.push_back({add, [regex](Terminal&, bool json) { return addFilter(*regex, json); }});
  commands.push_back(
      {remove, [number](Terminal&, bool json) { return removeFilter(*number, json); }});
  commands.push_back({filters, [](Terminal&, bool json) { return listFilters(json); }});
}

}  // namespace veltramoor::cli
