// What servers pages get through to, by every way that a page has.
#include <array>

#include "remote/ServerInfo.h"
#include "remote/screens/ClientWebViewController.h"
#include "shell/pages/SiteWebViewController.h"
#include "support/WebTest.h"

namespace veltramoor {
namespace {

using test::Application;
using test::RawServer;
using test::waitFor;

// Asks for an address below each of `bases` by a script's call, by the older kind of it, as a
// picture, a frame, a form and a WebSocket.
constexpr char kAttempts[] = R"page(<body><script>
  function attempt(base) {
    fetch(base + '/fetch', {method: 'POST', mode: 'no-cors', body: 'x'}).catch(() => {});
    const old = new XMLHttpRequest();
    old.open('POST', base + '/xhr');
    old.send('x');
    new Image().src = base + '/image';
    const frame = document.createElement('iframe');
    frame.src = base + '/frame';
    const target = document.createElement('iframe');
    target.name = 'target' + Math.random();
    const form = document.createElement('form');
    form.method = 'post';
    form.target = target.name;
    form.action = base + '/form';
    document.body.append(frame, target, form);
    form.submit();
    new WebSocket(base.replace('http', 'ws') + '/socket');
    navigator.sendBeacon(base + '/beacon', 'x');
  }
</script>)page";
constexpr std::array kWays = {"/fetch", "/xhr", "/image", "/frame", "/form", "/socket", "/beacon"};

class WebReachTest : public test::WebTest {
 protected:
  WebReachTest() {
    ServerInfo& info = ServerInfo::sharedInstance();
    info.setClient("Vuze");
    info.setPort(std::to_string(other_.port()));
  }
  [[nodiscard]] std::string at(const std::string& host) const {
    return "http://" + host + ":" + std::to_string(other_.port());
  }
  /// Has the page on show attempt `bases`, and waits until as many ways have led to the last.
  static void attempt(const WebViewController& screen, const std::vector<std::string>& bases,
                      const std::function<std::size_t(const std::string&)>& hits) {
    std::string script = "0";
    for (const std::string& base : bases) {
      script += ";attempt('" + base + "')";
    }
    valueOf(screen, script + ";0");
    for (const char* way : kWays) {
      EXPECT_TRUE(waitFor([&] { return hits(way) > 0; })) << way;
    }
  }

  // On this machine, as whatever name it is asked by.
  RawServer other_{[](const test::RecordedRequest&) {
    return RawServer::response(200, "", {"Access-Control-Allow-Origin: *"});
  }};
};

TEST_F(WebReachTest, TheSitesPagesReachNeitherThisMachineNorTheRemote) {
  ServerInfo::sharedInstance().setAddress("box.example");
  pages_.set("/", kAttempts);
  for (const char* path : {"/away/frame", "/away/form", "/away/main"}) {
    pages_.set(path, RawServer::response(307, "", {"Location: " + other_.url("/redirected")}));
  }
  const auto site = std::make_shared<SiteWebViewController>(std::nullopt, nullptr);
  watch(*site);
  Application app(std::make_shared<NavigationController>(site));
  ASSERT_TRUE(waitForLoads(1));
  // What the name server says of a name is not known here: that one gets through, and was asked for
  // after all the others.
  attempt(
      *site,
      {at("127.0.0.1"), at("localhost"), at("2130706433"), at("[::ffff:127.0.0.1]"),
       at("box.example"), pages_.url("/away"), pages_.url("/own"), at("free.example") + "/free"},
      [this](const std::string& way) {
        return pages_.hits("/own" + way) > 0 && pages_.hits("/away" + way) > 0
                   ? other_.hits("/free" + way)
                   : 0;
      });
  int loads = 1;
  for (const auto& [to, reached] : {std::pair(other_.url("/main"), other_.url("/main")),
                                    {pages_.url("/away/main"), other_.url("/redirected")}}) {
    valueOf(*site, "location = '" + to + "'; 0");
    ASSERT_TRUE(waitForLoads(++loads));
    EXPECT_FALSE(lastGood_);
    EXPECT_EQ(app.item("webError")->property("text").toString().toStdString(),
              reached + " could not be loaded: no page here may lead into the network around you.");
  }
  for (const test::RecordedRequest& request : other_.requests()) {
    EXPECT_EQ(request.target.substr(0, 6), "/free/") << request.head;
  }
}

TEST_F(WebReachTest, ThePagesOfTheRemoteReachItAlone) {
  ServerInfo::sharedInstance().setAddress("127.0.0.1");
  ServerInfo::sharedInstance().setPort(std::to_string(pages_.port()));
  pages_.set("/", kAttempts);
  const auto remote = std::make_shared<ClientWebViewController>(
      std::nullopt, ClientWebViewController::OpenedFrom::TabBar);
  watch(*remote);
  Application app(std::make_shared<NavigationController>(remote));
  ASSERT_TRUE(waitForLoads(1));
  configuration_.siteHost = other_.hostAndPort();
  SiteConfiguration::setCurrent(configuration_);
  attempt(*remote, {at("127.0.0.1"), at("free.example"), pages_.url("/own")},
          [this](const std::string& way) { return pages_.hits("/own" + way); });
  EXPECT_EQ(other_.hits(), 0U);
}

}  // namespace
}  // namespace veltramoor
