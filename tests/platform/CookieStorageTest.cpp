#include "platform/CookieStorage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <set>
#include <stop_token>
#include <thread>
#include <utility>

#include "platform/UrlLoading.h"
#include "support/Cookies.h"
#include "support/RawServer.h"

namespace veltramoor {
namespace {

using test::kFarFuture;
using test::listing;
using test::RawReply;
using test::RawServer;
using test::RecordedRequest;
using test::requestTo;

/// A Cookie field's pairs; which of two of one path goes first differs from release to release.
std::string sorted(const std::string& field) {
  std::multiset<std::string> pairs;
  for (std::size_t begin = 0; begin < field.size();) {
    const std::size_t end = std::min(field.find("; ", begin), field.size());
    pairs.insert(field.substr(begin, end - begin));
    begin = end + 2;
  }
  std::string text;
  for (const std::string& pair : pairs) {
    text += (text.empty() ? "" : "; ") + pair;
  }
  return text;
}

TEST(CookieStorageTest, ListsInTheOrderOfFirstStoringWhateverTheDomain) {
  CookieStorage store(std::nullopt);
  std::string expected;
  for (int i = 0; i < 12; ++i) {
    const std::string number = std::to_string(i);
    store.insert({.name = "uid", .value = number, .domain = ".site" + number + ".example"});
    expected += ".site" + number + ".example/ uid=" + number + "\n";
  }
  EXPECT_EQ(listing(store), expected);
  store.insert({.name = "uid", .value = "new", .domain = ".SITE0.example"});
  expected.replace(0, std::string(".site0.example/ uid=0").size(), ".SITE0.example/ uid=new");
  EXPECT_EQ(listing(store), expected);
  EXPECT_EQ(store.erase({".site0.example"}), 1U);
  EXPECT_EQ(listing(store), expected.substr(expected.find('\n') + 1));
}

TEST(CookieStorageTest, KeepsEveryFieldAndRefusesWhatItCannotHold) {
  CookieStorage store(std::nullopt);
  store.insert({.name = "a",
                .value = "",
                .domain = "host.example",
                .path = "/x y",
                .expires = kFarFuture,
                .secure = true,
                .httpOnly = true});
  store.insert({.name = "gone", .value = "1", .domain = "host.example", .expires = 5});
  const std::string nul(1, '\0');
  for (const std::string& bad :
       {std::string("x\ty"), std::string("x\ny"), std::string("x\ry"), "x" + nul}) {
    store.insert({.name = bad, .value = "v", .domain = "host.example"});
    store.insert({.name = "n", .value = bad, .domain = "host.example"});
    store.insert({.name = "n", .value = "v", .domain = bad});
    store.insert({.name = "n", .value = "v", .domain = "host.example", .path = "/" + bad});
  }
  for (const std::string bad :
       {"", ".", "#host.example", "Set-Cookie: a=b; domain=c", "..host.example", "..", "a..b",
        "host.example..", "a b", ".a/b", "a;b", "a,b"}) {
    store.insert({.name = "n", .value = "v", .domain = bad});
    EXPECT_EQ(store.erase({bad}), 0U) << "what is not kept is not erased";
  }
  store.insert({.name = "", .value = "v", .domain = "host.example"});
  const auto kept = store.cookies();
  ASSERT_EQ(kept.size(), 1U) << listing(store);
  EXPECT_EQ(kept[0].name + "=" + kept[0].value + "@" + kept[0].domain + kept[0].path,
            "a=@host.example/x y");
  EXPECT_EQ(kept[0].expires, kFarFuture);
  EXPECT_TRUE(kept[0].secure && kept[0].httpOnly);
  // No path is the root's: these two are one cookie.
  store.insert({.name = "b", .value = "1", .domain = "host.example", .path = ""});
  store.insert({.name = "b", .value = "2", .domain = "host.example"});
  EXPECT_EQ(listing(store), "host.example/x y a=\nhost.example/ b=2\n");
}

TEST(CookieStorageTest, ErasesByExactDomainAndName) {
  CookieStorage store(std::nullopt);
  // A part, an end or a beginning in common is no equality.
  const std::vector<std::string> others = {".www.site.example", "notsite.example",
                                           "site.example.org", "example", ".other.example"};
  std::string left;
  for (const std::string& domain : others) {
    left += domain + "/ uid=1\n" + domain + "/ language=1\n";
  }
  std::vector<std::string> domains = {".site.example", "site.example"};
  domains.insert(domains.end(), others.begin(), others.end());
  for (const std::string& domain : domains) {
    for (const char* name : {"uid", "language"}) {
      store.insert({.name = name, .value = "1", .domain = domain, .httpOnly = name[0] == 'u'});
    }
  }
  store.insert({.name = "uid", .value = "1", .domain = ".site.example", .path = "/deep"});
  store.insert({.name = "uid", .value = "1", .domain = ".site.example", .path = "noslash"});
  EXPECT_EQ(store.erase({".SITE.example", "site.example"}, "language"), 2U);
  EXPECT_EQ(store.erase({".site.example", "site.example"}, "Uid"), 0U);
  EXPECT_EQ(store.erase({"site.example"}), 1U) << "a leading dot tells two domains apart";
  EXPECT_EQ(store.erase({".site.example", "captcha.example"}), 3U);
  EXPECT_EQ(listing(store), left);
}

TEST(CookieStorageTest, TheCookieOfACompoundStepIsNeverMissing) {
  // Unlocked, about one request in 300 went out between the deletion and the insertion; and one in
  // a few hundred crashed where threads shared an engine of libcurl 8.14.1.
  constexpr std::size_t kRequests = 10'000;
  std::atomic<int> missing = 0;
  const RawServer server([&missing](const RecordedRequest& request) {
    const std::string cookies = request.header("Cookie").value_or("");
    missing += cookies.find("language=en_EN") == std::string::npos ? 1 : 0;
    return RawServer::response(200, "", {"Set-Cookie: seen=1"});
  });
  CookieStorage store(std::nullopt);
  UrlLoading loading(store);
  {
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 10; ++thread) {
      threads.emplace_back([&] {
        for (std::size_t i = 0; i < kRequests / 10; ++i) {
          const Cookie language{.name = "language", .value = "en_EN", .domain = ".127.0.0.1"};
          if (i % 2 == 0) {
            store.keepOnly({".127.0.0.1", "127.0.0.1"}, language);
          } else {
            store.atomically([&language](CookieStorage& locked) {
              locked.erase({".127.0.0.1", "127.0.0.1"}, "language");
              locked.insert(language);
            });
          }
          EXPECT_TRUE(loading.send(requestTo(server.url())).response);
        }
      });
    }
  }
  EXPECT_EQ(server.hits(), kRequests);
  EXPECT_EQ(missing, 0);
  EXPECT_EQ(listing(store), "127.0.0.1/ seen=1\n.127.0.0.1/ language=en_EN\n");
}

TEST(CookieStorageTest, ATransferTakesNoCookieBackThatWentMeanwhile) {
  const RawServer server([](const auto&) {
    return RawReply::hang(
        "HTTP/1.1 200 OK\r\nContent-Length: 9\r\nSet-Cookie: session=1\r\n\r\nhalf");
  });
  // One cookie that comes after a logout is stored, and takes none of the others along.
  CookieStorage emptied(std::nullopt);
  emptied.insert({.name = "old", .value = "0", .domain = "127.0.0.1"});
  emptied.insert({.name = "gone", .value = "0", .domain = "127.0.0.1"});
  const RawServer late([&emptied](const auto&) {
    emptied.erase({"127.0.0.1"});
    return RawServer::response(200, "", {"Set-Cookie: late=1", "Set-Cookie: gone=; Max-Age=0"});
  });
  EXPECT_TRUE(UrlLoading(emptied).send(requestTo(late.url())).response);
  EXPECT_EQ(listing(emptied), "127.0.0.1/ late=1\n");

  for (const bool isLoggedOut : {false, true}) {
    CookieStorage store(std::nullopt);
    store.insert({.name = "old", .value = "0", .domain = "127.0.0.1"});
    UrlLoading loading(store);
    std::stop_source stop;
    std::jthread sending([&] {
      UrlRequest request = requestTo(server.url());
      request.stop = stop.get_token();
      EXPECT_FALSE(loading.send(request).response);
    });
    // It is there for others before the body is.
    const std::string both = "127.0.0.1/ old=0\n127.0.0.1/ session=1\n";
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (listing(store) != both && std::chrono::steady_clock::now() < limit) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_EQ(listing(store), both);
    if (isLoggedOut) {
      EXPECT_EQ(store.erase({"127.0.0.1"}), 2U);
    }
    stop.request_stop();
    sending.join();
    EXPECT_EQ(listing(store), isLoggedOut ? "" : both);
  }
}

TEST(CookieStorageTest, WhatAnAnswerSetsIsStoredInItsOrderAndSentByItsRules) {
  std::vector<std::string> set;
  const RawServer server(
      [&set](const auto&) { return RawServer::response(200, "", std::exchange(set, {})); });
  CookieStorage store(std::nullopt);
  UrlLoading loading(store);
  const auto sentTo = [&](const std::string& path) {
    EXPECT_TRUE(loading.send(requestTo(server.url(path))).response);
    return server.requests().back().header("Cookie").value_or("");
  };
  for (const std::string name : {"z", "b", "y", "a"}) {
    set.push_back("Set-Cookie: " + name + " = 1; Max-Age=9999");
  }
  set.emplace_back("Set-Cookie: elsewhere=1; Domain=other.example");
  set.emplace_back("set-cookie: b=2; Path=/deep");
  sentTo("/");
  const std::string host = "127.0.0.1";
  EXPECT_EQ(listing(store), host + "/ z=1\n" + host + "/ b=1\n" + host + "/deep b=2\n" + host +
                                "/ y=1\n" + host + "/ a=1\n");
  EXPECT_EQ(sentTo("/deep/er").substr(0, 4), "b=2;");
  // What one host deletes or sets anew is nothing to another's of the same name.
  store.insert({.name = "y", .value = "0", .domain = "other.example"});
  store.insert({.name = "z", .value = "0", .domain = "other.example"});
  // A path that has no slash to begin with is the root's, whichever came first; one at its end is
  // nothing.
  set = {"Set-Cookie: z=2; Path=noslash", "Set-Cookie: b=3; Path=/deep/",
         "Set-Cookie: y=; Max-Age=0", "Set-Cookie: unknown=; Max-Age=0"};
  sentTo("/");
  EXPECT_EQ(sorted(sentTo("/")), "a=1; b=1; z=2");
  EXPECT_EQ(store.erase({host}, "z"), 1U);
  EXPECT_EQ(sentTo("/deep/er").substr(0, 4), "b=3;");
  EXPECT_EQ(store.erase({host}, "b"), 2U);
  EXPECT_EQ(sentTo("/"), "a=1");
  // Two that were stored apart, and that libcurl cannot tell apart: the later one goes along.
  store.insert({.name = "p", .value = "1", .domain = host});
  store.insert({.name = "p", .value = "2", .domain = host, .path = "noslash"});
  EXPECT_EQ(sorted(sentTo("/")), "a=1; p=2");
  set = {"Set-Cookie: p=; Max-Age=0"};
  sentTo("/");
  EXPECT_EQ(sentTo("/"), "a=1");
  EXPECT_EQ(store.erase({host}), 1U);
  // Quotes around a path are no part of it, and its case tells no two apart.
  set = {"Set-Cookie: q=1; Path=\"/App\"", "Set-Cookie: q=2; Path=/app/"};
  EXPECT_EQ(sentTo("/"), "");
  store.insert({.name = "other", .value = "1", .domain = "other.example"});
  EXPECT_EQ(sentTo("/"), "");
  EXPECT_EQ(sentTo("/app"), "q=2");
  EXPECT_EQ(store.erase({host}), 1U);
  EXPECT_EQ(listing(store), "other.example/ y=0\nother.example/ z=0\nother.example/ other=1\n");
}

TEST(CookieStorageTest, KeepsOneOfANameWhoeverSetAnother) {
  std::string set;
  const RawServer server(
      [&set](const auto&) { return RawServer::response(200, "", {"Set-cookie: " + set}); });
  CookieStorage store(std::nullopt);
  UrlLoading loading(store);
  const auto keepEnglish = [&store] {
    store.keepOnly({".127.0.0.1", "127.0.0.1"},
                   {.name = "language", .value = "en_EN", .domain = ".127.0.0.1"});
    return listing(store);
  };
  store.insert({.name = "language", .value = "de", .domain = "other.example"});
  store.insert({.name = "uid", .value = "1", .domain = "127.0.0.1"});
  const std::string english =
      "other.example/ language=de\n127.0.0.1/ uid=1\n.127.0.0.1/ language=en_EN\n";
  EXPECT_EQ(keepEnglish(), english);
  EXPECT_EQ(keepEnglish(), english);
  for (const std::string other :
       {"language=de; domain=.127.0.0.1", "language=fr", "language=; max-age=0"}) {
    set = other;
    ASSERT_TRUE(loading.send(requestTo(server.url())).response);
    EXPECT_EQ(keepEnglish(), english) << other;
  }
  store.insert({.name = "language", .value = "es", .domain = "127.0.0.1"});
  EXPECT_EQ(keepEnglish(), english);
  store.erase({".127.0.0.1"});
  EXPECT_EQ(keepEnglish(), english);
}

}  // namespace
}  // namespace veltramoor
