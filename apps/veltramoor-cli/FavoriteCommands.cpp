#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>

#include "ArgumentChecks.h"
#include "CommandTable.h"
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

struct FilterArguments {
  std::string regex;
  int number = 0;
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

Commands favoriteCommands() {
  const auto listed = std::make_shared<FavoritesArguments>();
  const auto added = std::make_shared<FilterArguments>();
  const auto removed = std::make_shared<FilterArguments>();
  return {
      {"favourites",
       "List recent torrents that pass a filter",
       {{"--category", "Category code of the site; all, when none is given",
         into(listed, &FavoritesArguments::category), categoryCodes()},
        {"--pages", "How many pages to look through; 5, when not given",
         into(listed, &FavoritesArguments::pages), wholeNumbers(1, 500)}},
       [listed](Terminal& terminal, bool json) { return favorites(terminal, *listed, json); }},
      {"filters",
       "The favourite filters",
       {},
       [](Terminal&, bool json) { return listFilters(json); },
       {{"add",
         "Add a filter",
         {{"REGEX", "Regular expression that wanted names match",
           into(added, &FilterArguments::regex), utf8(), Argument::Kind::Required}},
         [added](Terminal&, bool json) { return addFilter(added->regex, json); }},
        {"remove",
         "Remove a filter",
         {{"N", "Its number in the list", into(removed, &FilterArguments::number), rowNumbers(),
           Argument::Kind::Required}},
         [removed](Terminal&, bool json) { return removeFilter(removed->number, json); }},
        {"list", "List the filters", {}, [](Terminal&, bool json) { return listFilters(json); }}}}};
}

}  // namespace veltramoor::cli
