// How a page looks until it is there, and the keys that are its own.
#include <QImage>

#include "shell/pages/SiteWebViewController.h"
#include "support/WebTest.h"

namespace veltramoor {
namespace {

using test::Application;
using test::RawServer;
using test::waitFor;

class PageLookTest : public test::WebTest {
 protected:
  PageLookTest() {
    configuration_.movieDatabaseHost = slow_.hostAndPort();
    SiteConfiguration::setCurrent(configuration_);
  }
  /// The colour below the page's text, once it has been drawn.
  static bool waitForGround(const Application& app, const char* colour) {
    const QQuickItem* view = app.item("webPlace");
    QColor seen;
    const bool there = waitFor([&] {
      const QImage image = app.window()->grabWindow();
      seen =
          image.pixelColor(view->mapToScene({view->width() / 2, view->height() * 0.8}).toPoint());
      return seen == QColor(colour);
    });
    EXPECT_TRUE(there) << seen.name().toStdString() << " instead of " << colour;
    return there;
  }

  RawServer slow_{[](const test::RecordedRequest&) { return test::RawReply::hang(); }};
};

TEST_F(PageLookTest, ItIsDarkUntilThereIsSomethingToSeeAndThenAsThePageWantsIt) {
  const std::string never = slow_.url("/");
  pages_.set("/", "<title>t</title><script src='" + never + "'></script><p>text</p>");
  const auto site = std::make_shared<SiteWebViewController>(std::nullopt, nullptr);
  watch(*site);
  Application app(std::make_shared<NavigationController>(site));
  ASSERT_TRUE(waitFor([this] { return slow_.hits() == 1; }));
  EXPECT_TRUE(waitForGround(app, "#333333"));
  slow_.stop();
  ASSERT_TRUE(waitForLoads(1));
  EXPECT_TRUE(waitForGround(app, "#ffffff")) << "which is what black text is written for";

  // Text is to be read before the last picture has come.
  const RawServer slower([](const test::RecordedRequest&) { return test::RawReply::hang(); });
  configuration_.movieDatabaseHost = slower.hostAndPort();
  SiteConfiguration::setCurrent(configuration_);
  pages_.set("/", "<title>t</title><p>text</p><img src='" + slower.url() + "'>");
  site->viewWillAppear();
  ASSERT_TRUE(waitFor([&] { return slower.hits() == 1; }));
  EXPECT_TRUE(waitForGround(app, "#ffffff"));
  EXPECT_TRUE(site->myWebView()->isLoading());
  pages_.set("/", "<title>t</title><body style='background: #102030'>text");
  site->viewWillAppear();
  EXPECT_TRUE(waitForGround(app, "#102030"));
}

TEST_F(PageLookTest, EscapeIsThePagesWhileNothingLoads) {
  pages_.set("/",
             "<title>t</title><script>var keys = ''; for (const type of ['keydown', 'keyup']) "
             "addEventListener(type, e => keys += type + e.key)</script><p id=p>text</p>");
  const auto site = std::make_shared<SiteWebViewController>(std::nullopt, nullptr);
  watch(*site);
  Application app(std::make_shared<NavigationController>(site));
  ASSERT_TRUE(waitForLoads(1));
  // The engine hands the focus on to its page in its own time.
  const auto typeUntilHeard = [&](Qt::Key key, const char* heard) {
    for (int tries = 0; tries < 50; ++tries) {
      app.item("webView")->forceActiveFocus();
      app.type(key);
      for (int looks = 0; looks < 10; ++looks) {
        if (valueOf(*site, "keys").find(heard) != std::string::npos) {
          return true;
        }
      }
    }
    return false;
  };
  EXPECT_TRUE(typeUntilHeard(Qt::Key_Escape, "keydownEscape"));
  EXPECT_TRUE(typeUntilHeard(Qt::Key_A, "keyupa")) << "nothing of the first key is under way";
  valueOf(*site, "keys = ''; location = '" + slow_.url() + "'; 0");
  ASSERT_TRUE(waitFor([&] { return slow_.hits() == 1 && site->myWebView()->isLoading(); }));
  app.type(Qt::Key_Escape);
  ASSERT_TRUE(waitFor([&] { return !site->myWebView()->isLoading(); }));
  EXPECT_TRUE(typeUntilHeard(Qt::Key_A, "keyupa"));
  EXPECT_EQ(valueOf(*site, "keys").find("keydownEscape"), std::string::npos)
      << "that one has stopped the load";
}

}  // namespace
}  // namespace veltramoor
