#include "platform/UrlLoading.h"

#include <gtest/gtest.h>

#include <thread>

#include "platform/CookieStorage.h"
#include "support/RawServer.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;
using test::RawReply;
using test::RawServer;
using test::RecordedRequest;

UrlRequest requestTo(const std::string& url) { return {.url = Url::parse(url).value()}; }

UrlRequest postTo(const std::string& url, std::string body, HeaderList headers = {}) {
  return {.url = Url::parse(url).value(),
          .method = "POST",
          .headers = std::move(headers),
          .body = std::move(body)};
}

class UrlLoadingTest : public testing::Test {
 protected:
  CookieStorage cookies_{std::nullopt};
  UrlLoading loading_{cookies_};
};

TEST_F(UrlLoadingTest, SendsHeadAndBodyByteForByte) {
  const RawServer server([](const auto&) { return RawServer::response(200); });
  const std::string host = server.hostAndPort();
  UrlRequest get = requestTo("http://u%40:p%20w@" + host + "/a/../%7e?q='(x)'#top");
  get.headers = {{"Content-Type", "text/html"},
                 {"X-Twice", "1"},
                 {"Accept-Enconding", "gzip"},
                 {"X-Twice", "2"},
                 {"X-Empty", ""}};
  EXPECT_EQ(loading_.send(get).data, "");
  get.headers = {{"authorization", "Basic own"}, {"Accept", "application/json"}};
  ASSERT_TRUE(loading_.send(get).response);
  ASSERT_TRUE(loading_.send(postTo(server.url(), "a\0b\r\n"s)).response);
  ASSERT_TRUE(
      loading_
          .send(postTo(server.url(), std::string(2'000'000, 'x'), {{"Content-Type", "text/xml"}}))
          .response);
  UrlRequest put = postTo(server.url(), "body");
  put.method = "PUT";
  ASSERT_TRUE(loading_.send(put).response);
  ASSERT_TRUE(loading_.send(requestTo("http://" + host + "?%7e#/top")).response);

  const auto seen = server.requests();
  ASSERT_EQ(seen.size(), 6U);
  EXPECT_EQ(seen[0].head,
            "GET /a/../%7e?q='(x)' HTTP/1.1\r\nHost: " + host +
                "\r\nAuthorization: Basic dUA6cCB3\r\nAccept: */*\r\n"
                "Accept-Encoding: " +
                *seen[0].header("Accept-Encoding") +
                "\r\nContent-Type: text/html\r\nX-Twice: 1\r\nAccept-Enconding: gzip\r\n"
                "X-Twice: 2\r\nX-Empty:\r\n\r\n");
  EXPECT_NE(seen[0].header("Accept-Encoding")->find("gzip"), std::string::npos);
  EXPECT_EQ(seen[0].body, "");
  EXPECT_EQ(seen[1].header("Authorization"), "Basic own");
  EXPECT_EQ(seen[1].header("Accept"), "application/json");
  EXPECT_EQ(seen[1].headerLines().size(), 4U);
  EXPECT_EQ(seen[1].connection, 0);
  EXPECT_EQ(seen[2].body, "a\0b\r\n"s);
  EXPECT_EQ(seen[2].header("Content-Length"), "5");
  EXPECT_EQ(seen[2].headerLines().size(), 4U);  // Neither Expect nor Content-Type.
  EXPECT_EQ(seen[3].body.size(), 2'000'000U);
  EXPECT_FALSE(seen[3].header("Expect"));
  EXPECT_EQ(seen[4].method + seen[4].body, "PUTbody");
  EXPECT_EQ(seen[5].target, "/?%7e");
}

TEST_F(UrlLoadingTest, RefusesHeadersThatWouldBreakOutOfTheirLine) {
  const RawServer server([](const auto&) { return RawServer::response(200); });
  for (const auto& [name, value] : HeaderList{{"X", "a\nY: b"},
                                              {"X", "a\r"},
                                              {"X", "a\0b"s},
                                              {"X\r\nY", "a"},
                                              {"X\0"s, "a"},
                                              {"X: y", "a"},
                                              {"", "a"}}) {
    UrlRequest request = requestTo(server.url());
    request.headers = {{name, value}};
    EXPECT_FALSE(loading_.send(request).response);
  }
  UrlRequest request = requestTo(server.url());
  request.method = "GET / HTTP/1.1\r\nX: y\r\n\r\nGET";
  EXPECT_FALSE(loading_.send(request).response);
  EXPECT_FALSE(loading_.send(requestTo("ftp://" + server.hostAndPort() + "/")).response);
  EXPECT_EQ(server.connections(), 0);
}

TEST_F(UrlLoadingTest, ReadsHeadersOfTheFinalAnswerOnly) {
  const RawServer server([](const auto&) -> RawReply {
    return "HTTP/1.1 103 Early\r\nX-Early: 1\r\n\r\nHTTP/1.1 409 Conflict\r\nX-Id:  a b "
           "\r\nX-Twice: 1\r\n"
           "x-twice: 2\r\nX-Folded: a\r\n  b\r\nTransfer-Encoding: "
           "chunked\r\n\r\n2\r\nno\r\n0\r\nX-Late: 1\r\n\r\n";
  });
  const UrlResult result = loading_.send(requestTo(server.url()));
  ASSERT_TRUE(result.response);
  EXPECT_EQ(result.response->statusCode, 409);
  EXPECT_EQ(result.data, "no");
  EXPECT_EQ(result.response->headers, (HeaderList{{"X-Id", "a b"},
                                                  {"X-Twice", "1"},
                                                  {"x-twice", "2"},
                                                  {"X-Folded", "a b"},
                                                  {"Transfer-Encoding", "chunked"}}));
  EXPECT_EQ(result.response->header("X-TWICE"), "1");
  EXPECT_FALSE(result.response->header("X-Late"));
}

TEST_F(UrlLoadingTest, AMisstatedLengthEndsItsConnection) {
  const RawServer server([](const auto&) { return RawServer::response(200); });
  ASSERT_TRUE(
      loading_.send(postTo(server.url(), "a\xc3\xa9z", {{"Content-Length", "3"}})).response);
  ASSERT_TRUE(loading_.send(requestTo(server.url())).response);
  const auto seen = server.requests();
  EXPECT_EQ(seen[0].body, "a\xc3\xa9z");
  EXPECT_EQ(seen[0].header("Content-Length"), "3");
  EXPECT_EQ(seen[1].method, "GET");
  EXPECT_NE(seen[0].connection, seen[1].connection);
}

TEST_F(UrlLoadingTest, SendsWhatHasAnEffectOnceWhenAKeptConnectionIsDropped) {
  const RawServer server([](const RecordedRequest& request) {
    return request.target == "/keep" ? RawReply(RawServer::response(200)) : RawReply::close();
  });
  UrlRequest once = requestTo(server.url("/once"));
  once.sendOnce = true;
  for (const UrlRequest& request :
       {postTo(server.url("/post"), "x"), once, requestTo(server.url("/get"))}) {
    ASSERT_TRUE(loading_.send(requestTo(server.url("/keep"))).response);
    EXPECT_FALSE(loading_.send(request).response);
  }
  EXPECT_EQ(server.hits("/post"), 1U);
  EXPECT_EQ(server.hits("/once"), 1U);
  EXPECT_EQ(server.hits("/get"), 2U);  // What the two others are spared.
}

TEST_F(UrlLoadingTest, FollowsRedirectsByTheirRules) {
  struct Case {
    int status;
    const char* method;
    const char* followedBy;
    bool keepsBody;
  };
  const RawServer server([](const RecordedRequest& request) {
    return request.target == "/end" ? RawServer::response(200, "end")
                                    : RawServer::response(std::stoi(request.target.substr(1)),
                                                          "gone", {"Location: end#x"});
  });
  for (const Case& c : {Case{301, "POST", "GET", false}, Case{302, "POST", "GET", false},
                        Case{303, "POST", "GET", false}, Case{303, "PUT", "GET", false},
                        Case{301, "PUT", "PUT", true}, Case{307, "POST", "POST", true},
                        Case{308, "POST", "POST", true}, Case{302, "GET", "GET", true},
                        Case{303, "HEAD", "HEAD", false}}) {
    SCOPED_TRACE(std::string(c.method) + std::to_string(c.status));
    const bool hasBody = c.keepsBody || std::string_view(c.method) == "POST";
    UrlRequest request{
        .url = Url::parse("http://u:p@" + server.hostAndPort() + "/" + std::to_string(c.status))
                   .value(),
        .method = c.method,
        .headers = {{"Content-Type", "text/plain"}, {"X-Session-Id", "s"}}};
    if (hasBody) {
      request.headers.emplace_back("Content-Length", "4");
      request.body = "body";
    }
    const UrlResult result = loading_.send(request);
    ASSERT_TRUE(result.response);
    EXPECT_EQ(result.response->statusCode, 200);
    EXPECT_EQ(result.response->url.withoutCredentials(), server.url("/end"));
    const RecordedRequest last = server.requests().back();
    EXPECT_EQ(last.method, c.followedBy);
    EXPECT_EQ(last.body, c.keepsBody ? "body" : "");
    EXPECT_EQ(last.header("Content-Length").has_value(), c.keepsBody);
    EXPECT_EQ(last.header("Content-Type").has_value(), c.keepsBody || c.followedBy == c.method);
    EXPECT_EQ(last.header("X-Session-Id"), "s");
    EXPECT_EQ(last.header("Authorization"), "Basic dTpw");
  }
}

TEST_F(UrlLoadingTest, WhatProvesSomethingToOneOriginNeverReachesAnother) {
  std::string home;
  const RawServer stranger([&home](const RecordedRequest& request) {
    return request.target == "/" ? RawServer::response(302, "", {"Location: /on"})
                                 : RawServer::response(302, "", {"Location: " + home + "/back"});
  });
  const RawServer server([&](const RecordedRequest& request) {
    return request.target == "/back"
               ? RawServer::response(200)
               : RawServer::response(302, "",
                                     {"Set-Cookie: mine=1",
                                      "Location: http://evil:pw@" + stranger.hostAndPort() + "/"});
  });
  home = server.url("");
  UrlRequest request = requestTo("http://me:secret@" + server.hostAndPort() + "/");
  const HeaderList secrets{
      {"Authorization", "Basic x"}, {"cookie", "a=b"},     {"X-Transmission-Session-Id", "1"},
      {"My-SESSION-ID", "2"},       {"X-CSRF-Token", "3"}, {"Host", "other"}};
  request.headers = secrets;
  request.headers.emplace_back("X-Requested-With", "XMLHttpRequest");
  ASSERT_EQ(loading_.send(request).response.value().statusCode, 200);
  auto later = stranger.requests();
  ASSERT_EQ(later.size(), 2U);
  later.push_back(server.requests().back());
  for (const RecordedRequest& seen : later) {
    for (const auto& [name, value] : secrets) {
      EXPECT_NE(seen.header(name), value) << seen.target;
    }
    EXPECT_FALSE(seen.header("Authorization"));
    EXPECT_EQ(seen.header("X-Requested-With"), "XMLHttpRequest");
  }
  // The cookie of the redirect itself is kept (host-only: it knows no ports), for the host that was
  // asked and not for the one that the request's own field named.
  EXPECT_EQ(later.back().header("Cookie"), "mine=1");
  EXPECT_EQ(server.requests().front().header("Host"), server.hostAndPort());
  EXPECT_EQ(cookies_.cookies().front().domain, "127.0.0.1");
}

TEST_F(UrlLoadingTest, ABodyIsNeverHandedToAnotherOrigin) {
  const RawServer stranger([](const auto&) { return RawServer::response(200); });
  std::string location;
  const RawServer server([&location](const RecordedRequest& request) {
    return request.target == "/end" ? RawServer::response(200)
                                    : RawServer::response(std::stoi(request.target.substr(1)),
                                                          "moved", {"Location: " + location});
  });
  const std::string otherPort = stranger.url("/end");
  const std::string otherHost = "http://localhost:" + std::to_string(server.port()) + "/end";
  const std::string otherScheme = "https://" + server.hostAndPort() + "/end";
  for (const std::string& target : {otherPort, otherHost, otherScheme}) {
    location = target;
    for (const auto& [status, method] : {std::pair{307, "POST"}, std::pair{308, "POST"},
                                         std::pair{307, "PUT"}, std::pair{301, "PUT"}}) {
      UrlRequest request = postTo(server.url("/" + std::to_string(status)), "password=secret");
      request.method = method;
      request.timeoutInterval = 2s;  // whoever follows to another scheme waits for an answer
      const UrlResult result = loading_.send(request);
      ASSERT_TRUE(result.response) << target << status;
      EXPECT_EQ(result.response->statusCode, status) << target;
      EXPECT_EQ(result.data, "moved");
    }
  }
  EXPECT_EQ(stranger.hits() + server.hits("/end"), 0U);
  // Followed without it, to show that each place but the one of another scheme can be reached.
  for (const std::string& target : {otherPort, otherHost}) {
    location = target;
    const UrlResult result = loading_.send(postTo(server.url("/302"), "password=secret"));
    ASSERT_TRUE(result.response) << target;
    EXPECT_EQ(result.response->statusCode, 200);
  }
  for (const RecordedRequest& seen : {stranger.requests().back(), server.requests().back()}) {
    EXPECT_EQ(seen.method + seen.target + seen.body, "GET/end");
  }
}

TEST_F(UrlLoadingTest, KnowsWhichRedirectsLeadNowhere) {
  std::string location;
  const RawServer server([&location](const RecordedRequest& request) {
    return request.target == "/"                 ? RawServer::response(302, "body", {location})
           : request.target.starts_with("/loop") ? RawServer::response(302, "", {"Location: /loop"})
                                                 : RawServer::response(200);
  });
  for (const std::string refused :
       {"Location: magnet:?xt=urn:btih:0", "Location: file:///etc/passwd", "X: no location"}) {
    location = refused;
    const UrlResult result = loading_.send(requestTo(server.url()));
    ASSERT_TRUE(result.response) << refused;
    EXPECT_EQ(result.response->statusCode, 302);
    EXPECT_EQ(result.data, "body");
  }
  location = "Location: " + server.url("/a b/%zz/%41[1]?q=\"x\"");
  EXPECT_EQ(loading_.send(requestTo(server.url())).response.value().statusCode, 200);
  EXPECT_EQ(server.requests().back().target, "/a%20b/%25zz/%41%5B1%5D?q=%22x%22");

  EXPECT_FALSE(loading_.send(requestTo(server.url("/loop"))).response);
  EXPECT_EQ(server.hits("/loop"), 21U);
}

// Zeros, compressed three times over: 16 MiB of them, and one more.
const std::string kLargestBody =
    "\x1f\x8b\x08\x00\x00\x00\x00\x00\x02\x03\x93\xef\xe6\x60\x00\x01\x26\xe6\xb7\xb7\xd6\xf2"
    "\x1e\x4a\x10\x69\xbb\xf8\x4f\x41\x8a\xe5\x81\x60\x09\x0f\x4f\xd3\x04\x85\x80\x19\x59\x87"
    "\x04\x2c\x5c\x84\x55\xda\x44\x3d\x56\xa4\xb1\xce\x68\xda\xc0\xec\xb8\x80\x73\xa9\xbc\xb3"
    "\xc2\xac\xe2\x2b\xab\xd7\xd7\x14\xb9\xff\xd6\xe1\x9a\xf4\xa5\xb0\xf7\x71\xda\x94\xf6\xf3"
    "\x3f\x67\x96\x2a\x03\xcd\x5a\xf0\xf4\xd4\x6f\x3d\x5e\x43\x85\x53\xaf\x6f\xd7\x44\x82\x0c"
    "\xcf\xdd\xfe\xee\xbb\xd5\x7e\x8d\x0f\x71\xbc\xcb\xcf\x31\x02\xf9\x6b\xc3\x7d\x8f\x55\x66"
    "\x30\x36\x87\xef\x9d\xa9\x2a\xa7\x0a\x14\x78\xc0\xaf\x77\xf4\xd1\x0e\x5b\x53\xe5\x7f\x4c"
    "\x7c\xc5\x27\xb6\x9d\xb0\x67\x60\x00\x00\x70\x77\x87\x77\x99\x00\x00\x00"s;
const std::string kTooLargeBody =
    "\x1f\x8b\x08\x00\x00\x00\x00\x00\x02\x03\x93\xef\xe6\x60\x00\x01\x26\xe6\xb7\xb7\x0c\xf9"
    "\x0e\x26\x48\x1c\x7f\xf8\x3e\x9b\xb7\x97\x71\xb7\x63\xbf\xa2\x60\xb3\xc0\xe6\xd6\x50\x99"
    "\x43\xf7\x8e\x64\x14\xb2\x75\xee\x0c\x7f\x20\xf2\x88\x2f\xc9\xa0\x3b\xa8\xdd\xc0\xe4\xbc"
    "\xf1\xdf\xe7\xe5\x7f\x9e\xca\xbe\xd9\x1c\xe0\x7d\xe9\xb7\xea\xb1\xf7\x1a\x7c\xef\x3f\x4d"
    "\xdc\xca\x0c\x34\xe9\x42\xc1\xd1\xdc\xe9\xd7\x0c\x15\x9e\x5c\x2d\xdd\x17\xc1\x04\x14\xf0"
    "\xdd\xfe\xb2\x2c\x6a\xbf\xc6\x87\xa8\xef\xea\xe7\x18\x81\xfc\xde\x72\x29\xfe\xcf\xbb\x58"
    "\xbf\xcc\xbb\x5a\x36\xab\x62\x0a\x50\xa0\xc1\xde\x62\x7d\xdf\xe2\x22\x31\xe7\x0e\xf9\xb0"
    "\x69\x5c\x13\x4e\xd8\x33\x30\x00\x00\x73\xb6\x1c\xcc\x97\x00\x00\x00"s;

TEST_F(UrlLoadingTest, DecodesUpToTheSizeLimitAndNotAByteMore) {
  const RawServer server([](const RecordedRequest& request) {
    return RawServer::response(200, request.target == "/16" ? kLargestBody : kTooLargeBody,
                               {"Content-Encoding: gzip, gzip, gzip"});
  });
  const UrlResult largest = loading_.send(requestTo(server.url("/16")));
  ASSERT_TRUE(largest.data);
  EXPECT_EQ(*largest.data, std::string(std::size_t{16} << 20U, '\0'));
  EXPECT_FALSE(loading_.send(requestTo(server.url("/17"))).response);
}

TEST_F(UrlLoadingTest, HugeAndBrokenAnswersAreNoAnswers) {
  const std::string line = "X: " + std::string(995, 'x') + "\r\n";
  std::string fields;
  for (int i = 0; i < 200; ++i) {
    fields += line;
  }
  const std::string ok = "HTTP/1.1 200 OK\r\n";
  const std::string sized = ok + "Content-Length: 9\r\n\r\n";
  const std::vector<RawReply> failing{
      RawReply::close(),
      RawReply::close("HTTP/1.1 200"),
      RawReply::close("hello"),
      RawReply::close(sized + "12345678"),
      RawReply::reset(sized + "12345678"),
      RawReply::close(ok + "Transfer-Encoding: chunked\r\n\r\n5\r\n12345\r\n"),
      RawReply(RawServer::response(200, "no gzip at all", {"Content-Encoding: gzip"})),
      RawReply::endless(ok + "\r\n", std::string(65536, 'x')),
      RawReply::endless(ok, line),
      RawReply::endless("", "HTTP/1.1 100 Continue\r\n\r\n"),
      RawReply(ok + fields + fields + "Content-Length: 0\r\n\r\n"),
  };
  const RawServer server([&](const RecordedRequest& request) {
    return request.target == "/200k" ? RawReply(ok + fields + "Content-Length: 0\r\n\r\n")
                                     : failing[std::stoul(request.target.substr(1))];
  });
  EXPECT_TRUE(loading_.send(requestTo(server.url("/200k"))).response);
  for (std::size_t i = 0; i < failing.size(); ++i) {
    const UrlResult result = loading_.send(requestTo(server.url("/" + std::to_string(i))));
    EXPECT_FALSE(result.response || result.data) << i;
  }
}

TEST_F(UrlLoadingTest, ThreadsKeepTheirConnections) {
  const RawServer server(
      [](const RecordedRequest& request) { return RawServer::response(200, request.target); });
  {
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 10; ++thread) {
      threads.emplace_back([&, thread] {
        for (int i = 0; i < 20; ++i) {
          const std::string path = "/" + std::to_string(thread * 100 + i);
          EXPECT_EQ(loading_.send(requestTo(server.url(path))).data, path);
        }
      });
    }
  }
  EXPECT_EQ(server.hits(), 200U);
  EXPECT_LE(server.connections(), 10);
}

}  // namespace
}  // namespace veltramoor
