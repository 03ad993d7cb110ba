// What goes over the wire to each kind of client.
#include "remote/BitClient.h"

#include <gtest/gtest.h>

#include "platform/Preferences.h"
#include "remote/ServerInfo.h"
#include "remote/Transmission.h"
#include "remote/Utorrent.h"
#include "remote/Vuze.h"
#include "support/FileStore.h"
#include "support/RawServer.h"

namespace veltramoor {
namespace {

using test::RawServer;
using test::RecordedRequest;
using Lines = std::vector<std::string>;

constexpr char kMagnet[] = "magnet:?xt=urn:btih:0&dn=\"x\"";

Lines own(const RecordedRequest& request) {
  Lines lines = request.headerLines();
  std::erase_if(lines, [](const std::string& line) {
    return line.starts_with("Host: ") || line.starts_with("Accept-Encoding: ") ||
           line == "Accept: */*" || line.starts_with("User-Agent: ");
  });
  return lines;
}

template <typename Client>
Client clientFor(const RawServer& server, const std::string& user = "") {
  Client client;
  client.address = "127.0.0.1";
  client.port = std::to_string(server.port());
  client.username = user;
  client.password = "p";
  client.filename = kMagnet;
  return client;
}

TEST(BitClientTest, RegistryAnswersForAllThreeKinds) {
  struct Kind {
    int index;
    const char* name;
    const char* port;
  };
  for (const Kind& kind :
       {Kind{0, "Vuze", "9091"}, Kind{1, "Transmission", "9091"}, Kind{2, "Utorrent", "8080"}}) {
    EXPECT_EQ(BitClient::getClientByIndex(kind.index), kind.name);
    const BitClientClass* found = BitClient::classNamed(kind.name);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->index, kind.index);
    EXPECT_EQ(found->defaultPort, kind.port);
    EXPECT_TRUE(found->defaultDescription.starts_with("Veltramoor can push torrent downloads"));
    EXPECT_NE(found->create(), nullptr);
  }
  for (const int other : {-1, 3, 99}) {
    EXPECT_EQ(BitClient::getClientByIndex(other), "");
  }
  EXPECT_EQ(BitClient::classNamed("transmission"), nullptr);
}

TEST(BitClientTest, TransmissionShakesHandsAndAdds) {
  const RawServer server([](const RecordedRequest&) {
    return RawServer::response(409, "id", {"x-transmission-session-id: S1"});
  });
  auto client = clientFor<Transmission>(server, "u");
  client.setSessionId();
  EXPECT_EQ(client.sessionId(), "S1");
  HttpRequest add = client.getDownload();
  add.request();
  const auto requests = server.requests();
  ASSERT_EQ(requests.size(), 2U) << "no second try";
  EXPECT_TRUE(requests[0].head.starts_with("GET /transmission/rpc HTTP/1.1\r\n"));
  EXPECT_EQ(own(requests[0]),
            (Lines{"Content-Type: text/html", "X-Requested-With: XMLHttpRequest",
                   "Pragma: no-cache", "Cache-Control: no-cache",
                   "Content-Type: ; charset=UTF-8json", "Authorization: Basic dTpw"}));
  EXPECT_EQ(requests[0].body, "");
  EXPECT_TRUE(requests[1].head.starts_with("POST /transmission/rpc HTTP/1.1\r\n"));
  const std::string body =
      std::string(R"({"method":"torrent-add","arguments":{"paused":false,"filename":")") + kMagnet +
      "\"}}";
  EXPECT_EQ(own(requests[1]),
            (Lines{"X-Requested-With: XMLHttpRequest",
                   "Accept: application/json, text/javascript, */*; q=0.01",
                   "Accept-Enconding: gzip,deflate,sdch", "Content-Type: json",
                   "X-Transmission-Session-Id: S1",
                   "Content-Length: " + std::to_string(body.size()), "Authorization: Basic dTpw"}));
  EXPECT_EQ(requests[1].body, body);
}

TEST(BitClientTest, VuzeAddsWithoutASessionId) {
  const RawServer server([](const RecordedRequest&) { return RawServer::response(200); });
  auto client = clientFor<Vuze>(server);
  client.BitClient::setSessionId();
  HttpRequest add = client.getDownload();
  add.request();
  ASSERT_EQ(server.hits(), 1U);
  EXPECT_EQ(server.requests()[0].target, "/transmission/rpc");
  EXPECT_EQ(server.requests()[0].header("X-Transmission-Session-Id"), std::nullopt);
  EXPECT_EQ(server.requests()[0].header("Authorization"), std::nullopt);
  client.file = "F";
  client.filename = "a.torrent";
  const std::string boundary(kMultipartBoundary);
  EXPECT_EQ(client.getData(),
            "--" + boundary +
                "\r\nContent-Disposition: form-data; name=\"upfile_1\"; filename=\"\"\r\n"
                "Content-Type: application/octet-stream\r\n\r\n\r\n--" +
                boundary +
                "\r\nContent-Disposition: form-data; name=\"upfile_0\"; filename=\"a.torrent\"\r\n"
                "Content-Type: application/octet-stream\r\n\r\nF\r\n--" +
                boundary + "--\r\n");
}

TEST(BitClientTest, UtorrentTakesTheTokenOrTheWholePage) {
  std::string page = "<html><div id='token' style='display:none;'>T-1</div></html>";
  const RawServer server([&](const RecordedRequest&) { return RawServer::response(200, page); });
  auto client = clientFor<Utorrent>(server, "u");
  client.filename = "magnet:?xt=a&dn=b";
  client.setSessionId();
  EXPECT_EQ(client.sessionId(), "T-1");
  EXPECT_EQ(own(server.requests()[0]),
            (Lines{"Content-Type: text/html", "X-Requested-With: XMLHttpRequest", "X-Request: JSON",
                   "Authorization: Basic dTpw"}));
  HttpRequest add = client.getDownload();
  add.request();
  EXPECT_EQ(server.requests()[1].target, "/gui/?token=T-1&action=add-url&s=magnet:?xt=a&dn=b");
  EXPECT_EQ(own(server.requests()[1]),
            (Lines{"Content-Type: text/html", "X-Requested-With: XMLHttpRequest",
                   "Accept: application/json", "Accept-Enconding: gzip,deflate,sdch",
                   "X-Request: JSON", "Authorization: Basic dTpw"}));
  page = "no token here";
  client.setSessionId();
  EXPECT_EQ(client.sessionId(), page);
  EXPECT_EQ(client.getUrl(), std::nullopt) << "blanks make no URL";
}

// The token is used up by then, and the torrent perhaps added.
TEST(BitClientTest, UtorrentAddsOnceWhenItsKeptConnectionIsDropped) {
  const RawServer server([](const RecordedRequest& request) {
    return request.target == "/gui/token.html" ? test::RawReply(RawServer::response(200, "T"))
                                               : test::RawReply::close();
  });
  auto client = clientFor<Utorrent>(server);
  client.filename = "magnet:?xt=a";
  client.setSessionId();
  HttpRequest add = client.getDownload();
  add.request();
  EXPECT_FALSE(add.isResponseValid());
  EXPECT_EQ(server.hits("/gui/?token=T&action=add-url&s=magnet:?xt=a"), 1U);
  EXPECT_EQ(server.hits(), 2U);
}

TEST(BitClientTest, WebUrlsCarryCredentialsAsTyped) {
  struct Case {
    const char* kind;
    const char* withUser;
    const char* without;
  };
  for (const Case& one :
       {Case{"Transmission", "http://u:p@10.0.0.2:9091/transmission/web/",
             "http://10.0.0.2:9091/transmission/web/"},
        Case{"Vuze", "http://u:p@10.0.0.2:9091/", "http://10.0.0.2:9091/"},
        Case{"Utorrent", "http://u:p@10.0.0.2:9091/gui/", "http://10.0.0.2:9091/gui/"}}) {
    const auto client = BitClient::classNamed(one.kind)->create();
    client->address = "10.0.0.2";
    client->port = "9091";
    client->password = "p";
    EXPECT_EQ(client->getWebUrl()->absoluteString(), one.without);
    client->username = "u";
    EXPECT_EQ(client->getWebUrl()->absoluteString(), one.withUser);
    client->address.reset();
    EXPECT_EQ(client->getWebUrl(), std::nullopt) << "nothing is at (null)";
  }
}

TEST(ServerInfoTest, ReadsTheStoreAnewAndWritesAtOnce) {
  Preferences store(std::nullopt);
  Preferences::setSharedInstance(&store);
  EXPECT_EQ(ServerInfo::sharedInstance().client(), std::nullopt);
  EXPECT_EQ(BitClient::configured(ServerInfo::sharedInstance()), nullptr);
  ServerInfo::sharedInstance().setPort(std::nullopt);
  EXPECT_EQ(store.writeCount(), 0U);
  ServerInfo::sharedInstance().setClient("Transmission");
  EXPECT_EQ(store.string("Veltramoor_serverClient"), "Transmission");
  store.setString("Veltramoor_serverAddress", "box");
  const ServerInfo& info = ServerInfo::sharedInstance();
  EXPECT_EQ(info.address(), "box");
  EXPECT_EQ(BitClient::configured(info)->address, "box");
  store.setString("Veltramoor_serverClient", "Other");
  EXPECT_EQ(BitClient::configured(ServerInfo::sharedInstance()), nullptr);
  Preferences::setSharedInstance(nullptr);
}

TEST(ServerInfoTest, ARefusedValueIsNotTheRecordsEither) {
  test::FileStore store;
  ServerInfo& info = ServerInfo::sharedInstance();
  EXPECT_TRUE(info.setAddress("old"));
  {
    const test::FullDisk fullDisk;
    EXPECT_FALSE(info.setAddress("new"));
  }
  EXPECT_EQ(info.address(), "old");
  EXPECT_EQ(store->string("Veltramoor_serverAddress"), "old");
}

}  // namespace
}  // namespace veltramoor
