// The addresses that each list asks for, by the settings of the moment.
#include "lists/listings/Listing.h"

#include <gtest/gtest.h>

#include <functional>

#include "PreferencesKeys.h"
#include "demo/DemoSite.h"
#include "lists/listings/FavoriteFetching.h"
#include "lists/listings/FavoriteListing.h"
#include "lists/listings/MagnetAddress.h"
#include "lists/listings/RecentListing.h"
#include "lists/listings/SearchListing.h"
#include "lists/listings/SiteCodes.h"
#include "lists/listings/Top100Listing.h"
#include "lists/listings/UploadListing.h"
#include "platform/Preferences.h"
#include "platform/RunLoop.h"
#include "platform/SiteConfiguration.h"
#include "site/UserInfo.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;

class ListingTest : public testing::Test {
 protected:
  ListingTest() {
    Preferences::setSharedInstance(&store_);
    SiteConfiguration configuration;
    configuration.siteHost = "site.test";
    SiteConfiguration::setCurrent(configuration);
  }
  ~ListingTest() override {
    UserInfo::sharedInstance().setUsername(std::nullopt);
    SiteConfiguration::setCurrent({});
    Preferences::setSharedInstance(nullptr);
  }

  /// What follows the host; "" for no URL.
  static std::string target(const std::optional<Url>& url) {
    const std::string site = SiteConfiguration::current().siteAddress("");
    return url ? url->absoluteString().substr(site.size()) : "";
  }
  void choose(const Listing& listing, std::string_view category, std::string_view order,
              std::string_view sort) {
    const ListingKeys& keys = listing.keys();
    for (const auto& [key, value] :
         {std::pair(keys.category, category), {keys.order, order}, {keys.sort, sort}}) {
      if (!key.empty()) {
        store_.setString(key, value);
      }
    }
  }

  Preferences store_{std::nullopt};
};

TEST_F(ListingTest, FollowTheStoredSettings) {
  RecentListing recent;
  SearchListing search;
  Top100Listing top;
  UploadListing uploads;
  search.search("q");
  UserInfo::sharedInstance().setUsername("anna");
  EXPECT_EQ(target(recent.pageUrl(0)), "/recent/0") << "nothing stored";
  EXPECT_EQ(target(search.pageUrl(0)), "/search/q/0/99/0");
  EXPECT_EQ(target(top.firstPageUrl()), "/top/all");
  EXPECT_EQ(target(uploads.pageUrl(1)), "/user/anna/1/99");
  struct Case {
    const char* category;
    const char* order;
    const char* sort;
    const char* recent;
    const char* search;
    const char* uploads;
  };
  for (const Case& one : {
           Case{"", "", "", "/recent/0", "/search/q/0/99/0", "/user/anna/0/99"},
           Case{"0", "7", "asc", "/recent/0", "/search/q/0/8/0", "/user/anna/0/8"},
           Case{"201", "", "asc", "/browse/201/0/100/", "/search/q/0/100/201", "/user/anna/0/100"},
           Case{"600", "5", "desc", "/browse/600/0/5/", "/search/q/0/5/600", "/user/anna/0/5"},
           Case{"201", "5", "up", "/browse/201/0/5/", "/search/q/0/5/201", "/user/anna/0/5"},
           Case{"999", "x", "asc", "/browse/999/0/1/", "/search/q/0/1/999", "/user/anna/0/1"},
       }) {
    for (const Listing* listing :
         std::initializer_list<const Listing*>{&recent, &search, &uploads}) {
      choose(*listing, one.category, one.order, one.sort);
    }
    EXPECT_EQ(target(recent.firstPageUrl()), one.recent);
    EXPECT_EQ(target(search.firstPageUrl()), one.search);
    EXPECT_EQ(target(uploads.firstPageUrl()), one.uploads);
  }
  for (const CategoryGroup& group : categoryTable()) {
    for (const SettingChoice& member : group.members) {
      const std::string code(member.code);
      choose(top, code, {}, {});
      EXPECT_EQ(target(top.firstPageUrl()), "/top/" + (code == "0" ? "all" : code));
      for (const SettingChoice& order : orderTable()) {
        for (const SettingChoice& sort : sortTable()) {
          const int sorted = std::stoi(std::string(order.code)) + (sort.code == "asc" ? 1 : 0);
          choose(search, code, order.code, sort.code);
          EXPECT_EQ(target(search.pageUrl(2)),
                    "/search/q/2/" + std::to_string(sorted) + "/" + code);
          choose(recent, code, order.code, sort.code);
          EXPECT_EQ(
              target(recent.pageUrl(2)),
              code == "0" ? "/recent/2" : "/browse/" + code + "/2/" + std::to_string(sorted) + "/");
        }
      }
    }
  }
}

TEST_F(ListingTest, WhatFollowsTheTop100IsRecent) {
  Top100Listing top;
  top.setCurrentPage(0);
  EXPECT_EQ(target(top.pageUrl(top.nextPage())), "/recent/1");
  store_.setString(PreferencesKeys::recentCategory, "205");
  EXPECT_EQ(target(top.pageUrl(2)), "/browse/205/2/99/");
}

TEST_F(ListingTest, EscapeWhatIsLookedFor) {
  SearchListing search;
  EXPECT_EQ(target(search.pageUrl(0)), "/search/(null)/0/99/0");
  for (const auto& [text, escaped] : std::initializer_list<std::pair<const char*, const char*>>{
           {"zzzz", "zzzz"},
           {"a b", "a%20b"},
           {" ", "%20"},
           {"100%", "100%25"},
           {"a%20b", "a%20b"},
           {"5%zz", "5%25zz"},
           {"<\"[#]\\^`{|}>", "%3C%22%5B%23%5D%5C%5E%60%7B%7C%7D%3E"},
           {"a&b=c+(d)'", "a&b=c+(d)'"},
           {"na\u00efve", "(null)"},
           {"\u65e5\u672c", "(null)"}}) {
    search.search(text);
    EXPECT_EQ(target(search.pageUrl(0)), std::string("/search/") + escaped + "/0/99/0");
  }
}

TEST_F(ListingTest, ANameThatNoUrlMayHoldGivesNone) {
  UploadListing uploads;
  for (const auto& [name, expected] :
       std::initializer_list<std::pair<std::optional<std::string>, const char*>>{
           {"a%20b", "/user/a%20b/0/99"},
           {"Anonymous", "/user/Anonymous/0/99"},
           {"a b", ""},
           {"50%", ""},
           {"\u00e9", ""},
           {std::nullopt, "/user/(null)/0/99"}}) {
    UserInfo::sharedInstance().setUsername(name);
    EXPECT_EQ(target(uploads.pageUrl(0)), expected);
  }
}

// What an option of one command changes is neither stored nor seen by another list.
TEST_F(ListingTest, OneCanBeToldOtherSettings) {
  RecentListing told;
  told.overrideSetting(PreferencesKeys::recentCategory, "205");
  told.overrideSetting(PreferencesKeys::recentSortBy, "asc");
  store_.setString(PreferencesKeys::recentOrderBy, "7");
  EXPECT_EQ(target(told.pageUrl(0)), "/browse/205/0/8/");
  EXPECT_EQ(target(RecentListing().pageUrl(0)), "/recent/0");
  EXPECT_EQ(store_.string(PreferencesKeys::recentCategory), std::nullopt);
}

TEST_F(ListingTest, FavouritesComeInBatchesThatSkipAPage) {
  FavoriteListing favorites;
  for (const auto& [stored, pages] :
       std::initializer_list<std::pair<const char*, int>>{{"", 5},
                                                          {"20", 20},
                                                          {"0", 1},
                                                          {"-3", 1},
                                                          {"many", 1},
                                                          {"20abc", 1},
                                                          {"+-5", 1},
                                                          {"99999999999", 1},
                                                          {" +4 ", 4},
                                                          {"3", 3}}) {
    store_.setString(PreferencesKeys::favoritesCount, stored);
    EXPECT_EQ(FavoriteListing::storedPages(), pages) << stored;
  }
  favorites.setPages(5);
  std::vector<std::pair<int, int>> batches;
  for (PageBatch batch = favorites.firstBatch(); batches.size() < 3;
       batch = favorites.batchAfter(favorites.nextPage())) {
    batches.emplace_back(batch.start, batch.start + batch.count - 1);
  }
  EXPECT_EQ(batches, (std::vector<std::pair<int, int>>{{0, 4}, {6, 10}, {12, 16}}));
  EXPECT_EQ(target(favorites.pageUrl(3)), "/recent/3");
  // Not settings of this list, whatever they hold.
  store_.setString(PreferencesKeys::recentOrderBy, "7");
  store_.setString(PreferencesKeys::recentSortBy, "asc");
  store_.setString(PreferencesKeys::favoriteCategory, "207");
  EXPECT_EQ(target(favorites.pageUrl(3)), "/browse/207/3/3");
}

TEST_F(ListingTest, LinksAreSentAsTheyStandUnlessTheSiteWritesEntities) {
  struct Case {
    const char* link;
    const char* decoded;
  };
  for (const Case& one : {Case{"magnet:?a&amp;b&amp;c", "magnet:?a&b&c"},
                          Case{"magnet:?a&amp;amp;b&c&#38;d", "magnet:?a&amp;b&c&#38;d"},
                          Case{"magnet:?a", "magnet:?a"}, Case{"no url", ""}}) {
    Torrent torrent;
    torrent.downloadUrl = one.link;
    for (const std::string mode : {"keep", "decode"}) {
      SiteConfiguration configuration;
      configuration.magnetEntities = mode;
      SiteConfiguration::setCurrent(configuration);
      const std::string expected = mode == "keep" && *one.decoded != 0 ? one.link : one.decoded;
      const auto address = sendAddress(torrent.downloadUrl);
      EXPECT_EQ(address ? address->absoluteString() : "", expected) << mode;
    }
  }
}

// Ten threads fetch; pages arrive in their order whoever was first, and a failed one is counted.
TEST_F(ListingTest, FavouritesAreHandedOverInPageOrder) {
  RunLoop loop;
  DemoSite site;
  SiteConfiguration configuration;
  configuration.siteHost = site.host();
  SiteConfiguration::setCurrent(configuration);
  site.setFault("/recent/0", Fault{FaultKind::None, 300ms, 1});
  site.setFault("/recent/4", Fault{FaultKind::Close, {}, 0});
  store_.setArray(PreferencesKeys::filters, {"[A-M]"});
  FavoriteListing listing;
  std::vector<std::string> dates;
  std::size_t accepted = 0;
  FavoriteFetching fetching([&](FilteredPage page) {
    if (page.torrents) {
      dates.push_back(page.torrents->front().detailsUrl);
      accepted += acceptedTorrents(std::move(page)).size();
    }
  });
  fetching.fetch(listing, {.start = 0, .count = 12}, nullptr);
  EXPECT_EQ(fetching.outstanding(), 12);
  ASSERT_TRUE(loop.runUntil([&] { return fetching.outstanding() == 0; }, 20s));
  EXPECT_EQ(fetching.failed(), 1);
  ASSERT_EQ(dates.size(), 11U);
  site.clearFaults();
  site.clearLog();
  std::vector<std::string> again;
  FavoriteFetching oneByOne(
      [&](FilteredPage page) { again.push_back(page.torrents->front().detailsUrl); });
  for (const int page : {0, 1, 2, 3, 5, 6, 7, 8, 9, 10, 11}) {
    oneByOne.fetch(listing, {.start = page, .count = 1}, nullptr);
    ASSERT_TRUE(loop.runUntil([&] { return oneByOne.outstanding() == 0; }, 20s));
  }
  EXPECT_EQ(dates, again);
  EXPECT_GT(accepted, 0U);
  EXPECT_LT(accepted, 11 * Listing::kFullPage);
}

}  // namespace
}  // namespace veltramoor
