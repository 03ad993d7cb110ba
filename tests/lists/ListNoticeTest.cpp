// What a list says of itself, and what a tap on it does.
#include "lists/AllListViewController.h"
#include "lists/Top100ListViewController.h"
#include "remote/ServerInfo.h"
#include "support/ListingPage.h"
#include "support/RawServer.h"
#include "support/ScreenTest.h"
#include "support/TransmissionDaemon.h"

namespace veltramoor {
namespace {

using test::RawReply;
using test::RawServer;
using test::RecordedRequest;
using test::waitFor;

class ListNoticeTest : public test::ScreenTest {
 protected:
  ListNoticeTest() { watch(*list_); }
  ~ListNoticeTest() override {
    EXPECT_TRUE(waitFor([this] { return !list_->hasBackgroundWork(); }));
    QCoreApplication::processEvents();
  }

  void watch(AllListViewController& list) {
    QObject::connect(&list, &AllListViewController::pageLoaded, [this] { ++pages_; });
  }
  [[nodiscard]] bool waitForPage() {
    return waitFor([this, next = pages_ + 1] { return pages_ == next; });
  }
  void loadMore() {
    list_->didSelectRowAtIndexPath(list_->rows()->torrentCount());
    ASSERT_TRUE(waitForPage());
  }
  [[nodiscard]] std::string notice() const { return list_->notice().toStdString(); }

  VeltramoorAppDelegate delegate_;
  std::shared_ptr<AllListViewController> list_ =
      std::make_shared<AllListViewController>(TableViewStyle::Plain);
  int pages_ = 0;
};

TEST_F(ListNoticeTest, SaysWhatTheSiteAnsweredAndATapAsksAgain) {
  struct Case {
    RawReply reply;
    const char* begin;
  };
  const std::vector<Case> cases = {
      {RawReply::reset(), "The list did not come. 127.0.0.1 broke the connection off."},
      {RawServer::response(503, "Back soon"), "The site answered with an error (503)."},
      {RawServer::response(200, "<input type=\"password\">"),
       "The page lists nothing and has a login form"},
      {RawServer::response(200, "<title>New look</title>"),
       "No torrents here. Tap refresh, or choose another category.\nThe page has 23 bytes and the "
       "title \"New look\"."},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.begin);
    std::atomic<bool> mended{false};
    const RawServer site([&](const RecordedRequest&) {
      return mended ? RawReply(RawServer::response(200, test::listingPage({"A"}))) : one.reply;
    });
    SiteConfiguration configuration = SiteConfiguration::current();
    configuration.siteHost = site.hostAndPort();
    SiteConfiguration::setCurrent(configuration);
    list_ = std::make_shared<AllListViewController>(TableViewStyle::Plain);
    watch(*list_);
    list_->viewWillAppear();
    ASSERT_TRUE(waitForPage());
    EXPECT_TRUE(list_->notice().startsWith(QLatin1String(one.begin))) << notice();
    mended = true;
    const bool isEmptyList = one.begin[0] == 'N';
    EXPECT_EQ(list_->noticeAction().isEmpty(), isEmptyList);
    list_->didTapNotice();
    EXPECT_EQ(list_->headerView()->refreshBtn()->isEnabled(), isEmptyList);
    if (!isEmptyList) {
      ASSERT_TRUE(waitForPage());
      EXPECT_EQ(list_->rows()->torrentCount(), 1);
      EXPECT_EQ(notice(), "");
    }
    ASSERT_TRUE(waitFor([this] { return !list_->hasBackgroundWork(); }));
  }
}

TEST_F(ListNoticeTest, UnderRowsATapAsksForThePageThatDidNotCome) {
  list_->viewWillAppear();
  ASSERT_TRUE(waitForPage());
  site_.setFault("/recent/1", Fault{FaultKind::Error500, {}, 0});
  loadMore();
  EXPECT_EQ(notice(),
            "The next page did not come. The site answered with an error (500). Tap here to ask "
            "for it again.");
  EXPECT_EQ(list_->rows()->rowCount(), 30) << "the row that asks for more has gone";
  site_.clearFaults();
  list_->didTapNotice();
  list_->didTapNotice();
  ASSERT_TRUE(waitForPage());
  EXPECT_EQ(list_->rows()->rowCount(), 61);
  EXPECT_EQ(notice(), "");
  EXPECT_EQ(site_.log().back().target, "/recent/1");
  loadMore();
  EXPECT_EQ(site_.log().back().target, "/recent/2");
}

// Two fetches of different settings stand in one list until the person refreshes it.
TEST_F(ListNoticeTest, SaysThatTheSettingsHaveChangedAndMarksTheirButton) {
  Button& settings = *list_->headerView()->settingsBtn();
  list_->viewWillAppear();
  ASSERT_TRUE(waitForPage());
  EXPECT_EQ(settings.mark(), QString());
  store_.setString("Veltramoor_recentOrderBy", "7");
  list_->viewWillAppear();
  EXPECT_EQ(notice(), "") << "over all categories the site knows one order";
  EXPECT_EQ(settings.mark(), QString());

  store_.setString("Veltramoor_recentCategory", "205");
  store_.setString("Veltramoor_recentSortBy", "asc");
  list_->viewWillAppear();
  EXPECT_EQ(notice(), "The settings have changed since. Tap here to list by the new ones.");
  EXPECT_EQ(settings.mark(), QStringLiteral("Video, TV shows; by seeders, ascending"));
  loadMore();
  EXPECT_EQ(site_.log().back().target, "/browse/205/1/8/");
  EXPECT_FALSE(list_->noticeAction().isEmpty()) << "what has come is of both";
  list_->didTapNotice();
  ASSERT_TRUE(waitForPage());
  EXPECT_EQ(site_.log().back().target, "/browse/205/0/8/");
  EXPECT_EQ(notice(), "");
  list_->viewWillAppear();
  EXPECT_EQ(notice(), "");

  store_.setString("Veltramoor_recentCategory", "0");
  list_->viewWillAppear();
  EXPECT_FALSE(list_->noticeAction().isEmpty());
  store_.setString("Veltramoor_recentCategory", "205");
  list_->viewWillAppear();
  EXPECT_EQ(notice(), "") << "the old choice is the present one again";
}

TEST_F(ListNoticeTest, AFailedSendSaysWhyAndLeadsToTheRemoteSettings) {
  int led = 0;
  list_->showRemoteSettings = [&led] { ++led; };
  list_->viewWillAppear();
  ASSERT_TRUE(waitForPage());
  ServerInfo& info = ServerInfo::sharedInstance();
  info.setClient("Transmission");
  info.setAddress("127.0.0.1");
  const std::string closed = std::to_string(test::freePort());
  info.setPort(closed);
  int sends = 0;
  QObject::connect(&list_->sending(), &ListSending::finished, [&sends] { ++sends; });
  list_->didTapDownloadButton(0);
  ASSERT_TRUE(waitFor([&] { return sends == 1; }));
  EXPECT_TRUE(list_->notice().startsWith(QStringLiteral("Not sent. The computer is there, but "
                                                        "nothing answers at port ") +
                                         QString::fromStdString(closed)))
      << notice();
  EXPECT_TRUE(delegate_.alertView()->isVisible());
  list_->didTapNotice();
  EXPECT_EQ(led, 1);
  EXPECT_EQ(notice(), "") << "it has been read";

  // A send's line does not take away what another one offers.
  site_.setFault("/recent/1", Fault{FaultKind::Error500, {}, 0});
  loadMore();
  list_->didTapDownloadButton(0);
  ASSERT_TRUE(waitFor([&] { return sends == 2; }));
  EXPECT_TRUE(list_->notice().startsWith(QStringLiteral("Not sent.")));

  const test::TransmissionDaemon daemon;
  info.setPort(daemon.port());
  list_->didTapDownloadButton(0);
  ASSERT_TRUE(waitFor([&] { return sends == 3; }));
  EXPECT_TRUE(list_->notice().startsWith(QStringLiteral("The next page did not come.")))
      << notice();
}

}  // namespace
}  // namespace veltramoor
