#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>

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
  std::optional<int> pages;
};

// What stands between the person and a full list, a line each.
void explain(const FavoriteFetching& fetching, const FilterSet& filters, bool anyRow) {
  if (filters.empty()) {
    fail(kDone, "There are no filters; add one with: filters add REGEX");
    return;
  }
  if (fetching.failed() > 0) {
    fail(kDone, fmt::format("{} of {} pages did not come.", fetching.failed(), fetching.asked()));
  }
  for (const std::string& regex : filters.givenUp()) {
    fail(kDone, fmt::format("The filter \"{}\" was given up on: it takes too long.", regex));
  }
  if (filters.invalid().size() == filters.size()) {
    fail(kDone, "No filter is a valid expression; see: filters list");
  } else if (!anyRow && fetching.failed() == 0 && filters.givenUp().empty()) {
    fail(kDone, "No filter accepts a torrent of these pages.");
  }
}

int favorites(Terminal& terminal, const FavoritesArguments& arguments, bool json) {
  becomeAnonymous();
  FavoriteListing listing;
  if (arguments.category) {
    listing.overrideSetting(listing.keys().category, *arguments.category);
  }
  listing.setPages(arguments.pages.value_or(listing.pages()));
  std::vector<Torrent> rows;
  std::function<void(bool)> end;
  FavoriteFetching fetching([&](FilteredPage page) {
    if (page.torrents) {
      std::ranges::move(acceptedTorrents(std::move(page)), std::back_inserter(rows));
    }
    if (fetching.outstanding() == 0) {
      end(fetching.failed() < fetching.asked());
    }
  });
  const bool arrived = terminal.wait([&](const std::function<void(bool)>& done) {
    end = done;
    fetching.fetch(listing, listing.firstBatch(), nullptr);
  });
  if (!arrived) {
    return failToLoad();
  }
  printRows(rows, json);
  explain(fetching, *listing.filters(), !rows.empty());
  return kDone;
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

int failToStore() {
  return fail(kRefused, Preferences::sharedInstance().lastProblem().value_or(
                            "The filters could not be stored."));
}

int addFilter(const std::string& regex, bool json) {
  const Filter filter(regex);
  if (const auto& problem = filter.problem()) {
    return fail(kWrongUsage, problem->offset ? fmt::format("At character {}: {}",
                                                           *problem->offset + 1, problem->reason)
                                             : problem->reason);
  }
  if (!FilterStore::append(regex)) {
    return failToStore();
  }
  return json ? listFilters(true) : kDone;
}

int removeFilter(int number, bool json) {
  const std::size_t count = FilterStore::regexes().size();
  if (number < 1 || static_cast<std::size_t>(number) > count) {
    return fail(kWrongUsage, count == 0 ? "There are no filters."
                                        : fmt::format("The filters are 1 to {}.", count));
  }
  if (!FilterStore::remove(static_cast<std::size_t>(number) - 1)) {
    return failToStore();
  }
  return json ? listFilters(true) : kDone;
}

}  // namespace

void addFavoriteCommands(CLI::App& app, Commands& commands) {
  CLI::App* listing = app.add_subcommand("favourites", "List recent torrents that pass a filter");
  const auto arguments = std::make_shared<FavoritesArguments>();
  listing->add_option("--category", arguments->category, "Category number, 0 for all")
      ->check(utf8())
      ->check(CLI::Range(0, 999));
  listing->add_option("--pages", arguments->pages, "How many pages to look through")
      ->check(CLI::Range(1, 500));
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
  remove->add_option("N", *number, "Its number in the list")->required();
  filters->add_subcommand("list", "List the filters");
  // The first command that was given is run: those beneath come before the one without any.
  commands.push_back({add, [regex](Terminal&, bool json) { return addFilter(*regex, json); }});
  commands.push_back(
      {remove, [number](Terminal&, bool json) { return removeFilter(*number, json); }});
  commands.push_back({filters, [](Terminal&, bool json) { return listFilters(json); }});
}

}  // namespace veltramoor::cli
