// A torrent's pages in the window: opened by a tap, walked through, sent from, left.
#include "shell/pages/TorrentWebViewController.h"

#include <unistd.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QTimer>

#include "remote/DownloadHistory.h"
#include "remote/ServerInfo.h"
#include "support/ListingPage.h"
#include "support/Places.h"
#include "support/TransmissionDaemon.h"
#include "support/WebTest.h"

namespace veltramoor {
namespace {

using test::Application;
using test::PageServer;
using test::RawServer;
using test::waitFor;

bool hasEngine(qint64 process) {
  QFile maps(QStringLiteral("/proc/%1/maps").arg(process));
  EXPECT_TRUE(maps.open(QIODevice::ReadOnly));
  return maps.readAll().contains("libQt6WebEngine");
}

std::string listing() {
  std::vector<std::string> names;
  for (int i = 0; i < 30; ++i) {
    names.push_back("Name " + std::to_string(i));
  }
  return test::listingPage(names, "magnet:?xt=a");
}

std::string detailsPage(const std::string& body) {
  return "<!DOCTYPE html><html><head><title>Details</title></head><body>"
         "<div id=\"detailsframe\">" +
         body + "<div id=\"comments\"><p>thanks</p></div></div></body></html>";
}

class TorrentWebViewControllerTest : public test::WebTest {
 protected:
  TorrentWebViewControllerTest() {
    configuration_.movieDatabaseHost = movies_.host();
    SiteConfiguration::setCurrent(configuration_);
    pages_.set("/recent/0", listing());
  }

  TorrentWebViewController* open(Application& app) {
    NavigationController* navigation = app.list().navigationController();
    app.click(app.row(0), {60, 15});
    auto* screen = qobject_cast<TorrentWebViewController*>(navigation->topViewController());
    EXPECT_NE(screen, nullptr);
    if (screen != nullptr) {
      watch(*screen);
    }
    return screen;
  }

  PageServer movies_;
};

TEST_F(TorrentWebViewControllerTest, TheProgramStartsWithoutTheEngine) {
  QProcess program;
  program.start(QString::fromStdString(test::program("veltramoor")),
                {QStringLiteral("--site-host"), QString::fromStdString(pages_.host()),
                 QStringLiteral("--report-first-frame")});
  ASSERT_TRUE(waitFor([&] { return program.readAllStandardOutput().contains("first frame"); }));
  EXPECT_FALSE(hasEngine(program.processId()));
  program.kill();
  ASSERT_TRUE(program.waitForFinished());
}

TEST_F(TorrentWebViewControllerTest, WalksThroughPagesAndBackAndSends) {
  pages_.set("/torrent/1/a",
             detailsPage("<p><a id=next href=\"page2\" target=_blank>next</a></p>"
                         "<p><a id=file href=\"/x.torrent\">file</a></p>"
                         "<p><a href=\"" +
                         movies_.url("/title/tt1/") +
                         "\">movie</a></p>"
                         "<p><a name=top>no address</a></p>"
                         "<p><a id=late href=\"/y.torrent\" target=_blank>late</a></p>"));
  pages_.set("/page2", "<title>Two</title><p><a id=next href=/page3>three</a></p>");
  pages_.set("/page3", "<title>Three</title><p>end</p>");
  movies_.set("/title/tt1/", "<title>Movie</title>");
  const RawServer client([](const test::RecordedRequest&) { return RawServer::response(200); });
  sendTo(client);

  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  AllListViewController& list = app.list();
  TorrentWebViewController* screen = open(app);
  ASSERT_NE(screen, nullptr);
  EXPECT_TRUE(waitFor([&] { return isOverlayShown(); }));
  ASSERT_TRUE(waitForLoads(1));
  EXPECT_TRUE(hasEngine(QCoreApplication::applicationPid()));
  EXPECT_FALSE(isOverlayShown());
  EXPECT_EQ(app.item("navigationTitle")->property("text").toString(), QString());
  const double right = app.window()->width() - 180;
  for (const auto& [name, x] : {std::pair<const char*, double>{"webBackButton", 0},
                                {"webPreviousButton", 65},
                                {"webImdbButton", right},
                                {"webForwardButton", right + 65},
                                {"webDownloadButton", right + 130}}) {
    ASSERT_TRUE(app.waitForItem(name)) << name;
    EXPECT_EQ(app.item(name)->mapToScene(QPointF()).x(), x) << name;
  }
  EXPECT_EQ(valueOf(*screen, "document.URL + ' ' + document.title + ' ' + document.compatMode"),
            pages_.url("/") + " Details CSS1Compat");
  EXPECT_EQ(valueOf(*screen,
                    "'' + ['next', 'file', 'late'].map(id => { const e = "
                    "document.getElementById(id); return e.hasAttribute('href') + '/' + "
                    "e.hasAttribute('target') })"),
            "true/false,false/false,true/true")
      << "the script ends at the anchor without an address";
  EXPECT_FALSE(screen->backButton()->isEnabled());

  tap(app, *screen, "next");
  ASSERT_TRUE(waitForLoads(2));
  tap(app, *screen, "next");
  ASSERT_TRUE(waitForLoads(3));
  EXPECT_EQ(valueOf(*screen, "document.title"), "Three");
  app.click(app.item("webPreviousButton"));
  ASSERT_TRUE(waitForLoads(4));
  EXPECT_EQ(valueOf(*screen, "document.title"), "Two");
  EXPECT_TRUE(screen->forwardButton()->isEnabled());
  app.click(app.item("webForwardButton"));
  ASSERT_TRUE(waitForLoads(5));
  app.click(app.item("webPreviousButton"));
  ASSERT_TRUE(waitForLoads(6));
  app.click(app.item("webPreviousButton"));
  ASSERT_TRUE(waitForLoads(7));
  EXPECT_EQ(valueOf(*screen, "document.title"), "Details") << "past the first page followed";
  EXPECT_FALSE(screen->backButton()->isEnabled());
  EXPECT_EQ(pages_.hits("/torrent/1/a"), 1U) << "the page is not fetched again";

  app.click(app.item("webImdbButton"));
  ASSERT_TRUE(waitForLoads(8));
  EXPECT_EQ(valueOf(*screen, "document.title"), "Movie");
  app.click(app.item("webDownloadButton"));
  ASSERT_TRUE(waitFor([&] { return list.rows()->torrents()->front().isDownloaded; }));
  app.click(app.item("webBackButton"));
  ASSERT_TRUE(app.waitForItem("torrentTable"));
  EXPECT_FALSE(isOverlayShown());
}

TEST_F(TorrentWebViewControllerTest, WithoutAMovieTheOtherButtonsKeepTheirPlaces) {
  pages_.set("/torrent/1/a", detailsPage("plain"));
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  ASSERT_NE(open(app), nullptr);
  ASSERT_TRUE(waitForLoads(1));
  EXPECT_EQ(app.item("webImdbButton"), nullptr);
  EXPECT_EQ(app.item("webForwardButton")->mapToScene(QPointF()).x(), app.window()->width() - 115);
  app.click(app.item("webView"));
  app.type(Qt::Key_Escape);
  ASSERT_TRUE(app.waitForItem("torrentTable")) << "the key leads out of the page";
}

TEST_F(TorrentWebViewControllerTest, AFailedLoadSaysWhatFailedAndTheWayBackWorks) {
  const RawServer broken([](const test::RecordedRequest&) {
    return test::RawReply::close(
        "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: "
        "100000\r\n\r\n<title>Half</title>" +
        std::string(5000, 'x'));
  });
  const std::string gone = "127.0.0.1:" + std::to_string(test::freePort());
  configuration_.forumHost = broken.hostAndPort();
  configuration_.movieDatabaseHost = gone;
  SiteConfiguration::setCurrent(configuration_);
  pages_.set(
      "/torrent/1/a",
      detailsPage("<div style='width: 1200px'>wide</div><p><a id=gone href=\"http://u:secret@" +
                  gone +
                  "/x?key=1\">x</a></p><p><a id=next href=/two>2</a></p><p><a id=half href=\"" +
                  broken.url() + "\">half</a></p>"));
  pages_.set("/two", "<title>Two</title><a id=gone href=\"http://" + gone + "/x\">x</a>");
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  TorrentWebViewController* screen = open(app);
  ASSERT_TRUE(waitForLoads(1));
  const auto zoom = [&app] { return app.item("webView")->property("zoomFactor").toDouble(); };
  ASSERT_TRUE(waitFor([&] { return zoom() < 0.9; })) << "a wide page is drawn smaller";
  const double fitting = zoom();
  tap(app, *screen, "gone");
  ASSERT_TRUE(waitForLoads(2));
  EXPECT_FALSE(lastGood_);
  EXPECT_FALSE(isOverlayShown());
  EXPECT_EQ(app.item("webError")->property("text").toString().toStdString(),
            "http://" + gone + "/x could not be loaded: the server could not be reached.");
  EXPECT_TRUE(app.item("webError")->isVisible());
  app.click(app.item("webPreviousButton"));
  EXPECT_FALSE(app.item("webError")->isVisible());
  EXPECT_EQ(valueOf(*screen, "document.title"), "Details");
  EXPECT_EQ(zoom(), fitting);
  EXPECT_FALSE(screen->backButton()->isEnabled());
  tap(app, *screen, "next");
  ASSERT_TRUE(waitForLoads(3));
  tap(app, *screen, "gone");
  ASSERT_TRUE(waitForLoads(4));
  EXPECT_TRUE(app.item("webError")->isVisible());
  app.click(app.item("webPreviousButton"));
  EXPECT_FALSE(app.item("webError")->isVisible());
  EXPECT_EQ(valueOf(*screen, "document.title"), "Two") << "no page is skipped";
  app.click(app.item("webPreviousButton"));
  ASSERT_TRUE(waitForLoads(5));
  EXPECT_EQ(valueOf(*screen, "document.title"), "Details");
  EXPECT_FALSE(screen->backButton()->isEnabled());
  // A page that breaks off has taken the place of the one before it.
  tap(app, *screen, "half");
  ASSERT_TRUE(waitForLoads(6));
  EXPECT_TRUE(app.item("webError")->isVisible());
  app.click(app.item("webPreviousButton"));
  ASSERT_TRUE(waitForLoads(7));
  EXPECT_EQ(valueOf(*screen, "document.title"), "Details");
  EXPECT_FALSE(app.item("webError")->isVisible());
}

TEST_F(TorrentWebViewControllerTest, RootIsToldInsteadOfLosingTheProgram) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "only root is refused by the engine";
  }
  pages_.set("/torrent/1/a", detailsPage("plain"));
  qunsetenv("QTWEBENGINE_DISABLE_SANDBOX");
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  ASSERT_NE(open(app), nullptr);
  ASSERT_TRUE(app.waitForItem("webError"));
  EXPECT_EQ(app.item("webError")->property("text").toString(),
            QStringLiteral("The page could not be loaded: the web engine does not run as root."));
  EXPECT_EQ(app.item("webView"), nullptr);
  EXPECT_FALSE(isOverlayShown());
}

// The window paints and counts time while the page is on its way, and takes no taps.
TEST_F(TorrentWebViewControllerTest, AServerThatHangsCanBeGivenUpOn) {
  const RawServer silent([](const test::RecordedRequest&) { return test::RawReply::hang(); });
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  const AllListViewController& list = app.list();
  configuration_.siteHost = silent.hostAndPort();
  SiteConfiguration::setCurrent(configuration_);
  bool overlay = false;
  int frames = 0;
  QTimer::singleShot(300, [&] {
    overlay = app.item("loadingOverlay")->isVisible();
    QObject::connect(app.window(), &QQuickWindow::frameSwapped, app.window(), [&] { ++frames; });
    QTest::mouseClick(app.window(), Qt::LeftButton, {}, QPoint(60, 300));
    QTest::keyClick(app.window(), Qt::Key_F5);
  });
  QTimer::singleShot(800, [&] { QTest::keyClick(app.window(), Qt::Key_Escape); });
  QElapsedTimer waited;
  waited.start();
  TorrentWebViewController* screen = open(app);
  EXPECT_GE(waited.elapsed(), 700);
  EXPECT_LT(waited.elapsed(), 20'000);
  EXPECT_TRUE(overlay);
  EXPECT_GT(frames, 2) << "the wheel turns";
  EXPECT_EQ(silent.hits(), 1U) << "the tap opened nothing";
  EXPECT_FALSE(list.hasBackgroundWork()) << "the key refreshed nothing";
  ASSERT_NE(screen, nullptr);
  EXPECT_TRUE(app.waitForItem("webError"));
  EXPECT_FALSE(isOverlayShown());
  app.click(app.item("webBackButton"));
  ASSERT_TRUE(app.waitForItem("torrentTable"));
  // Without a keyboard: a tap, once the overlay offers it.
  QString hint;
  const auto tapSoon = [&] {
    QTest::mouseClick(app.window(), Qt::LeftButton, {}, QPoint(60, 300));
  };
  QTimer::singleShot(1000, tapSoon);
  QObject::connect(&LoadingIndicator::current(), &LoadingIndicator::changed, app.window(), [&] {
    if (hint.isEmpty() && !LoadingIndicator::current().hint().isEmpty()) {
      hint = app.item("loadingHint")->property("text").toString();
      QTimer::singleShot(50, tapSoon);
    }
  });
  waited.start();
  ASSERT_NE(open(app), nullptr);
  EXPECT_GE(waited.elapsed(), 2500) << "the first tap meant a row";
  EXPECT_LT(waited.elapsed(), 20'000);
  EXPECT_EQ(hint, QStringLiteral("Tap to stop waiting"));
}

TEST_F(TorrentWebViewControllerTest, ATappedMagnetLinkIsSentUnderTheTorrentsName) {
  pages_.set("/frame",
             "<a href='magnet:?xt=frame' onclick=\"parent.tapped = 'frame'\" "
             "style='font-size:80px'>magnet</a><script>document.links[0].click()</script>");
  pages_.set(
      "/torrent/1/a",
      detailsPage(
          "<script>var tapped = ''; addEventListener('click', e => { if "
          "(e.isTrusted) tapped = e.target.id })</script><p><a id=magnet "
          "href=\"magnet:?xt=urn:btih:tapped&dn=a|b c%\"><b id=inner>get</b></a></p>"
          "<p><b id=script onclick=\"document.getElementById('magnet').click()\">s"
          "</b></p><a href='magnet:?xt=label'><input id=box type=checkbox></a><label id=label "
          "for=box></label><iframe id=frame src=/frame></iframe><p><a id=blank target=_blank "
          "href=\"magnet:?xt=urn:btih:second\">new window</a></p>"));
  const RawServer client([](const test::RecordedRequest&) { return RawServer::response(200); });
  sendTo(client);
  const auto sent = [&client] {
    std::vector<std::string> links;
    for (const test::RecordedRequest& request : client.requests()) {
      if (const auto at = request.body.find("magnet:"); at != std::string::npos) {
        links.push_back(request.body.substr(at, request.body.find('"', at) - at));
      }
    }
    return links;
  };
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  AllListViewController& list = app.list();
  TorrentWebViewController* screen = open(app);
  ASSERT_TRUE(waitForLoads(1));
  valueOf(*screen, "document.getElementById('label').click(); 0");
  valueOf(*screen, "document.getElementById('magnet').click(); location = 'magnet:?xt=script'; 0");
  ASSERT_TRUE(waitForLoads(2)) << "the engine has begun and given up what the script asked for";
  for (const char* id : {"script", "frame"}) {
    ASSERT_TRUE(tapUntilHeard(app, *screen, id)) << id;
  }
  const int loads = loads_;
  tap(app, *screen, "inner");
  ASSERT_TRUE(waitFor([&] { return list.rows()->torrents()->front().isDownloaded; }));
  EXPECT_TRUE(app.item("webDownloadButtonMark")->isVisible());
  ASSERT_TRUE(tapUntilHeard(app, *screen, "blank"));
  ASSERT_TRUE(waitFor([&] { return DownloadHistory::names().size() == 2; }));
  EXPECT_EQ(sent(), (std::vector<std::string>{"magnet:?xt=urn:btih:tapped&dn=a%7Cb%20c%25",
                                              "magnet:?xt=urn:btih:second"}))
      << "nothing but what was tapped";
  EXPECT_EQ(DownloadHistory::names(), (std::vector<std::string>{"Name 0", "Name 0"}));
  EXPECT_EQ(loads_, loads);
  EXPECT_FALSE(screen->myWebView()->canGoBack());
  EXPECT_FALSE(screen->myWebView()->canGoForward());
  EXPECT_EQ(valueOf(*screen, "document.title + history.length"), "Details1");
  EXPECT_FALSE(app.item("webError")->isVisible());
}

// A refresh that was under way when the torrent was opened has replaced the rows since.
TEST_F(TorrentWebViewControllerTest, TheToolbarSendsTheTorrentThatWasOpened) {
  pages_.set("/torrent/1/a", detailsPage("plain"));
  const RawServer client([](const test::RecordedRequest&) { return RawServer::response(200); });
  sendTo(client);
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  const auto list = std::static_pointer_cast<AllListViewController>(app.list().shared_from_this());
  ASSERT_NE(open(app), nullptr);
  ASSERT_TRUE(waitForLoads(1));
  std::string other = listing();
  for (std::size_t at = 0; (at = other.find("Name 0")) != std::string::npos;) {
    other.replace(at, 6, "Newer!");
  }
  pages_.set("/recent/0", other);
  EXPECT_FALSE(app.item("webDownloadButtonMark")->isVisible());
  list->didRefresh();
  ASSERT_TRUE(waitFor([&] { return list->rows()->torrents()->front().name == "Newer!"; }));
  list->didTapDownloadButton(1);
  ASSERT_TRUE(waitFor([&] { return list->rows()->torrents()->at(1).isDownloaded; }));
  EXPECT_FALSE(app.item("webDownloadButtonMark")->isVisible()) << "that was another torrent";
  app.click(app.item("webDownloadButton"));
  ASSERT_TRUE(waitFor([&] { return DownloadHistory::names().size() == 2; }));
  ASSERT_TRUE(waitFor([&] { return list->sending().count() == 0; }));
  EXPECT_EQ(DownloadHistory::names(), (std::vector<std::string>{"Name 1", "Name 0"}));
  EXPECT_TRUE(app.item("webDownloadButtonMark")->isVisible()) << "the page says that it was sent";
}

}  // namespace
}  // namespace veltramoor
