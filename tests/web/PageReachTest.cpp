// Which addresses a page may ask, as a person, a page and the engine write them.
#include "web/PageReach.h"

#include <gtest/gtest.h>

#include <vector>

namespace veltramoor {
namespace {

TEST(PageReachTest, PagesOfTheSiteReachTheNetButNotThisMachineOrItsNeighbours) {
  const PageReach reach{.own = {"127.0.0.1:8080", "127.0.0.1:9090/forum", "index.example",
                                "[fd00::5]:81", "Movies.EXAMPLE:8443"},
                        .refused = " Box.example "};
  for (const char* url : {"http://127.0.0.1:8080/x",
                          "ws://127.0.0.1:8080/",
                          "http://127.0.0.1:9090/other",
                          "http://2130706433:8080/",
                          "http://index.example/",
                          "https://index.example/",
                          "https://index.example:444/",
                          "http://[fd00::5]:81/",
                          "https://movies.example:8443/a",
                          "http://8.8.8.8/",
                          "https://[2001:4860::8888]/",
                          "http://172.32.0.1/",
                          "http://11.0.0.1/",
                          "http://100.128.0.1/",
                          "http://169.253.0.1/",
                          "http://localhost.example/",
                          "http://mylocal.example/",
                          "http://sub.box.example/",
                          "http://[::ffff:8.8.8.8]/",
                          "data:text/html,x",
                          "blob:http://127.0.0.1/x",
                          "veltramoor-page:1"}) {
    EXPECT_TRUE(mayReach(QUrl(url), reach)) << url;
  }
  for (const char* url : {"http://127.0.0.1/",
                          "http://127.0.0.1:8081/",
                          "https://127.0.0.1/",
                          "ws://127.0.0.1:9091/",
                          "wss://127.9.9.9/",
                          "http://2130706433/",
                          "http://0x7f.1/",
                          "http://0177.0.0.1/",
                          "http://127.1/",
                          "http://127.0.0.1./",
                          "http://0.0.0.0:9091/",
                          "http://10.1.2.3/",
                          "http://172.16.0.1/",
                          "http://172.31.255.255/",
                          "http://192.168.178.1/",
                          "http://169.254.169.254/latest",
                          "http://100.64.0.1/",
                          "http://[::1]/",
                          "http://[::]:9091/",
                          "http://[fe80::1]/",
                          "http://[fd00::5]/",
                          "http://[fd00::5]:82/",
                          "http://[fec0::1]/",
                          "http://[::ffff:127.0.0.1]/",
                          "http://[::ffff:c0a8:101]/",
                          "http://[::7f00:1]/",
                          "http://[64:ff9b::10.0.0.1]/",
                          "http://nas/",
                          "http://nas.local:9091/",
                          "http://printer.home.arpa/",
                          "http://localhost/",
                          "http://LOCALHOST.:9091/",
                          "http://a.b.localhost/",
                          "http://ip6-localhost/",
                          "http://box.example/",
                          "http://BOX.example.:9091/",
                          "ws://box.example:1/",
                          "https://anna@box.example/"}) {
    EXPECT_FALSE(mayReach(QUrl(url), reach)) << url;
  }
}

// What a person types for a remote client is not always what may stand in a URL.
TEST(PageReachTest, TheRemoteIsRefusedHoweverItWasTyped) {
  for (const auto& [typed, url] :
       {std::pair<const char*, const char*>{"8.8.8.8", "http://8.8.8.8/"},
        {"8.8.8.8:9091", "http://8.8.8.8:80/"},
        {"2001:db8::1", "http://[2001:DB8:0::1]:9091/"},
        {"[2001:db8::1]", "http://[2001:db8::1]/"},
        {"anna@nas.example", "http://nas.example/"},
        {"nas.example/web", "http://nas.example/"}}) {
    EXPECT_FALSE(mayReach(QUrl(url), {.own = {}, .refused = typed})) << typed;
    EXPECT_TRUE(mayReach(QUrl(url), {.own = {}, .refused = ""})) << url;
  }
  const PageReach both{.own = {"nas.example:8080"}, .refused = "nas.example"};
  EXPECT_TRUE(mayReach(QUrl("http://nas.example:8080/"), both)) << "one machine may be both";
  EXPECT_FALSE(mayReach(QUrl("http://nas.example:9091/"), both));
}

TEST(PageReachTest, APageOfTheRemoteReachesItsOwnServerAlone) {
  const PageReach reach{.own = {"192.168.1.2:9091"}, .refused = {}, .nothingElse = true};
  EXPECT_TRUE(mayReach(QUrl("http://192.168.1.2:9091/transmission/rpc"), reach));
  EXPECT_TRUE(mayReach(QUrl("ws://192.168.1.2:9091/"), reach));
  for (const char* url :
       {"http://192.168.1.2/", "http://index.example/", "http://127.0.0.1:9091/"}) {
    EXPECT_FALSE(mayReach(QUrl(url), reach)) << url;
  }
  EXPECT_FALSE(
      mayReach(QUrl("http://index.example/"), {.own = {""}, .refused = {}, .nothingElse = true}));
}

}  // namespace
}  // namespace veltramoor
