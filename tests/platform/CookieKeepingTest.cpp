// How long cookies are kept, how many, and where.
#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <fstream>
#include <set>
#include <thread>

#include "platform/CookieLimits.h"
#include "platform/CookieStorage.h"
#include "platform/SiteConfiguration.h"
#include "support/Cookies.h"
#include "support/RawServer.h"
#include "support/TemporaryFolder.h"

namespace veltramoor {
namespace {

using test::kFarFuture;
using test::listing;
using test::RawServer;
using test::RecordedRequest;
using test::requestTo;
using test::TemporaryFolder;

TEST(CookieKeepingTest, ARestartLosesNothing) {
  const TemporaryFolder folder;
  const auto file = folder / "state.sqlite";
  const RawServer server([](const RecordedRequest& request) {
    return RawServer::response(200, "",
                               {"Set-Cookie: session=1; HttpOnly",
                                "Set-Cookie: kept=2; Max-Age=9999; Path=" + request.target,
                                "Set-Cookie: short=3; Max-Age=0"});
  });
  std::string before;
  {
    CookieStorage store(file);
    store.insert({.name = "z", .value = "0", .domain = ".z.example", .path = ""});
    store.insert({.name = "a", .value = "", .domain = "a.example", .expires = kFarFuture});
    UrlLoading loading(store);
    ASSERT_TRUE(loading.send(requestTo(server.url("/p"))).response);
    before = listing(store);
    // Written before the request returned, not by the destructor.
    EXPECT_EQ(listing(CookieStorage(file)), before);
  }
  EXPECT_EQ(before, ".z.example/ z=0\na.example/ a=\n127.0.0.1/ session=1\n127.0.0.1/p kept=2\n");
  CookieStorage store(file);
  EXPECT_EQ(listing(store), before);
  EXPECT_TRUE(store.cookies()[2].httpOnly);
  UrlLoading loading(store);
  ASSERT_TRUE(loading.send(requestTo(server.url("/p"))).response);
  EXPECT_EQ(server.requests().back().header("Cookie"), "kept=2; session=1");
  struct stat status {};
  ASSERT_EQ(stat(file.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST(CookieKeepingTest, WritesOnlyWhatItChangedItself) {
  const TemporaryFolder folder;
  const auto file = folder / "state.sqlite";
  CookieStorage first(file);
  first.insert({.name = "a", .value = "1", .domain = "a.example"});
  first.saveIfChanged();
  CookieStorage second(file);
  second.insert({.name = "b", .value = "2", .domain = "b.example"});
  second.saveIfChanged();
  first.insert({.name = "a", .value = "1", .domain = "a.example"});
  first.saveIfChanged();  // The same list as before: what the second wrote must stand.
  EXPECT_EQ(listing(CookieStorage(file)), "a.example/ a=1\nb.example/ b=2\n");
  first.insert({.name = "c", .value = "3", .domain = "c.example"});
  first.saveIfChanged();
  EXPECT_EQ(listing(CookieStorage(file)), "a.example/ a=1\nb.example/ b=2\nc.example/ c=3\n");
  // Of one cookie the later change stands, and what either deletes is gone.
  second.insert({.name = "a", .value = "4", .domain = "a.example"});
  second.erase({"b.example"});
  second.saveIfChanged();
  first.insert({.name = "d", .value = "5", .domain = "d.example"});
  first.erase({"c.example"});
  first.saveIfChanged();
  EXPECT_EQ(listing(CookieStorage(file)), "a.example/ a=4\nd.example/ d=5\n");
  first.erase({"a.example"});
  first.saveIfChanged();
  EXPECT_EQ(listing(CookieStorage(file)), "d.example/ d=5\n");
}

TEST(CookieKeepingTest, ACookieThatEndsDoesNotTakeItsRenewalAlong) {
  const TemporaryFolder folder;
  const auto file = folder / "state.sqlite";
  const auto now = std::chrono::duration_cast<std::chrono::seconds>(
                       std::chrono::system_clock::now().time_since_epoch())
                       .count();
  CookieStorage first(file);
  first.insert({.name = "a", .value = "1", .domain = "a.example", .expires = now + 1});
  first.saveIfChanged();
  CookieStorage second(file);
  second.insert({.name = "a", .value = "2", .domain = "a.example", .expires = kFarFuture});
  second.saveIfChanged();
  while (!first.cookies().empty()) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  first.insert({.name = "b", .value = "3", .domain = "b.example"});
  first.saveIfChanged();
  EXPECT_EQ(listing(CookieStorage(file)), "a.example/ a=2\nb.example/ b=3\n");
}

TEST(CookieKeepingTest, ThereIsALimitAndTheSessionOfTheSiteGoesLast) {
  const SiteConfiguration before = SiteConfiguration::current();
  SiteConfiguration configuration;
  configuration.siteHost = "www.site.example:8080";
  SiteConfiguration::setCurrent(configuration);
  const TemporaryFolder folder;
  const auto file = folder / "state.sqlite";
  CookieStorage store(file);
  const auto set = [&store](const std::string& name, const std::string& domain,
                            std::optional<std::int64_t> expires = std::nullopt) {
    store.insert({.name = name, .value = "1", .domain = domain, .expires = expires});
  };
  const auto namesOf = [&store](const std::string& domain) {
    std::set<std::string> names;
    for (const Cookie& cookie : store.cookies()) {
      if (cookie.domain.ends_with(domain)) {
        names.insert(cookie.name);
      }
    }
    return names;
  };
  set("uid", ".site.example");
  set("pass", "www.site.example");
  set("kept", "www.site.example", kFarFuture);
  for (std::size_t i = 0; i < kMostCookiesOfADomain; ++i) {
    set(std::to_string(i), i % 2 == 0 ? "flood.example" : ".Flood.example");
  }
  set("0", "flood.example");  // Set anew, it is not the oldest any more.
  set("new", "flood.example");
  EXPECT_EQ(namesOf("lood.example").size(), kMostCookiesOfADomain);
  EXPECT_EQ(namesOf("lood.example").count("0") + namesOf("lood.example").count("new"), 2U);
  EXPECT_EQ(namesOf("lood.example").count("1"), 0U);
  for (std::size_t i = 0; i < kMostCookies + 5; ++i) {
    set("n", std::to_string(i) + ".example");
    if (i % 500 == 0) {
      store.saveIfChanged();
    }
  }
  EXPECT_EQ(store.cookies().size(), kMostCookies);
  EXPECT_EQ(namesOf("site.example"), (std::set<std::string>{"pass", "uid"}));
  EXPECT_EQ(namesOf("lood.example").size(), 0U);
  EXPECT_EQ(store.cookies()[2].domain, "7.example") << "the oldest of the others";
  store.saveIfChanged();
  EXPECT_EQ(listing(CookieStorage(file)), listing(store));

  // What an older version stored without end.
  {
    SQLite::Database database(file.string(), SQLite::OPEN_READWRITE);
    SQLite::Transaction transaction(database);
    for (std::size_t i = 0; i < kMostCookies; ++i) {
      SQLite::Statement insertion(database, "INSERT INTO cookies (line) VALUES (?)");
      insertion.bind(1, "old" + std::to_string(i) + ".example\tFALSE\t/\tFALSE\t0\tn\tv");
      insertion.exec();
    }
    transaction.commit();
  }
  CookieStorage again(file);
  EXPECT_EQ(again.cookies().size(), kMostCookies);
  again.insert({.name = "n", .value = "v", .domain = "last.example"});
  again.saveIfChanged();
  SQLite::Database database(file.string());
  EXPECT_EQ(database.execAndGet("SELECT count(*) FROM cookies").getInt(), int{kMostCookies});
  EXPECT_EQ(again.cookies().front().name, "uid");
  SiteConfiguration::setCurrent(before);
}

TEST(CookieKeepingTest, WhatWentForAnAnswersCookieIsNotSentAnyMore) {
  const RawServer server(
      [](const auto&) { return RawServer::response(200, "", {"Set-Cookie: new=1"}); });
  CookieStorage store(std::nullopt);
  UrlLoading loading(store);
  store.insert({.name = "oldest", .value = "1", .domain = "127.0.0.1"});
  for (std::size_t i = 1; i < kMostCookiesOfADomain; ++i) {
    store.insert(
        {.name = std::to_string(i), .value = "1", .domain = "127.0.0.1", .path = "/elsewhere"});
  }
  for (const std::string expected : {"oldest=1", "new=1"}) {
    EXPECT_TRUE(loading.send(requestTo(server.url())).response);
    EXPECT_EQ(server.requests().back().header("Cookie"), expected);
    EXPECT_EQ(store.cookies().size(), kMostCookiesOfADomain);
  }
}

TEST(CookieKeepingTest, AFileThatCannotBeHadIsNoReasonToFail) {
  const TemporaryFolder folder;
  std::ofstream(folder / "plain") << "no folder";
  CookieStorage store(folder.path() / "plain" / "state.sqlite");
  store.insert({.name = "a", .value = "1", .domain = "a.example"});
  store.saveIfChanged();
  EXPECT_EQ(listing(store), "a.example/ a=1\n");
}

}  // namespace
}  // namespace veltramoor
