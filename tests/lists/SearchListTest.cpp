// Searching: what the site is asked for, and the screen that asks.
#include "lists/SearchListViewController.h"

#include <QAbstractItemModelTester>

#include "shell/overlay/LoadingIndicator.h"
#include "support/Application.h"

namespace veltramoor {
namespace {

using test::Application;
using test::waitFor;

class SearchListTest : public test::ScreenTest {
 protected:
  SearchListTest() {
    QObject::connect(list_.get(), &AllListViewController::pageLoaded, [this] { ++pages_; });
  }
  ~SearchListTest() override {
    EXPECT_TRUE(waitFor([this] { return !list_->hasBackgroundWork(); }));
    QCoreApplication::processEvents();
  }

  void search(const QString& text) {
    list_->searchBar()->setText(text);
    list_->searchBarSearchButtonClicked();
    arrive();
  }
  void arrive() {
    const int before = pages_;
    ASSERT_TRUE(waitFor([&] { return pages_ == before + 1; }));
  }
  [[nodiscard]] std::string asked() const { return site_.log().back().target; }
  void loadMore() {
    list_->didSelectRowAtIndexPath(list_->rows()->torrentCount());
    arrive();
  }

  // Gone in tests of the window, which has its own.
  std::optional<VeltramoorAppDelegate> delegate_{std::in_place};
  std::shared_ptr<SearchListViewController> list_ =
      std::make_shared<SearchListViewController>(TableViewStyle::Plain);
  QAbstractItemModelTester tester_{list_->rows(),
                                   QAbstractItemModelTester::FailureReportingMode::Warning};
  int pages_ = 0;
};

TEST_F(SearchListTest, StandsAboveALowerTable) {
  for (const bool pad : {false, true}) {
    const double banner = pad ? 90 : 50;
    const ListLayout layout = listLayout({320, 568}, pad, 568, 49, true);
    EXPECT_EQ(layout.searchBar, QRectF(0, banner + 34, 320, 45));
    EXPECT_EQ(layout.table, QRectF(0, banner + 79, 320, 568 - 49 - 45 - 53));
    EXPECT_EQ(layout.header, QRectF(0, banner, 320, 70));
  }
  EXPECT_FALSE(list_->searchBarFrame().isEmpty());
}

TEST_F(SearchListTest, AsksByTheSettingsOfTheMoment) {
  search(QStringLiteral("a b"));
  EXPECT_EQ(asked(), "/search/a%20b/0/99/0");
  store_.setString("Veltramoor_searchCategory", "201");
  store_.setString("Veltramoor_searchOrderBy", "7");
  list_->didRefresh();
  arrive();
  EXPECT_EQ(asked(), "/search/a%20b/0/7/201");
  search(QString::fromUtf8("na\u00efve"));
  EXPECT_EQ(asked(), "/search/(null)/0/7/201");
  EXPECT_EQ(list_->searchString(), std::nullopt);
  EXPECT_TRUE(list_->notice().contains(QStringLiteral("Latin"))) << "says why nothing was found";
}

TEST_F(SearchListTest, WaitsForAQueryPagesOnAndCountsAnewAtEachAppearance) {
  list_->viewWillAppear();
  EXPECT_FALSE(list_->hasBackgroundWork());
  EXPECT_EQ(list_->rows()->torrents(), std::nullopt);
  EXPECT_EQ(list_->rows()->rowCount(), 0);
  EXPECT_EQ(list_->notice(), QStringLiteral("Type what to look for."));
  EXPECT_FALSE(list_->headerView()->refreshBtn()->isEnabled()) << "there is nothing to ask again";

  list_->searchBar()->setText(QStringLiteral("the"));
  list_->searchBarSearchButtonClicked();
  EXPECT_EQ(LoadingIndicator::current().shownText(), QStringLiteral("Searching..."));
  EXPECT_TRUE(list_->notice().isEmpty());
  EXPECT_FALSE(list_->tableView()->allowsSelection());
  arrive();
  EXPECT_FALSE(LoadingIndicator::current().isShown());
  EXPECT_TRUE(list_->headerView()->refreshBtn()->isEnabled());
  EXPECT_EQ(list_->rows()->rowCount(), 31);
  loadMore();
  EXPECT_EQ(asked(), "/search/the/1/99/0");
  loadMore();
  EXPECT_EQ(asked(), "/search/the/2/99/0");
  EXPECT_EQ(list_->rows()->rowCount(), 91);

  list_->viewWillAppear();
  EXPECT_EQ(list_->rows()->rowCount(), 91) << "coming back keeps the results";
  loadMore();
  EXPECT_EQ(asked(), "/search/the/1/99/0") << "the counter starts anew";
  EXPECT_EQ(list_->rows()->torrentCount(), 120);

  list_->searchBar()->setText(QStringLiteral("not read by a refresh"));
  list_->didRefresh();
  EXPECT_EQ(list_->rows()->rowCount(), 0) << "blank while the search runs";
  arrive();
  EXPECT_EQ(asked(), "/search/the/0/99/0");
  EXPECT_EQ(list_->rows()->rowCount(), 31);
  EXPECT_TRUE(list_->tableView()->isScrollEnabled());
}

// A second query while the first one's page is under way must not show both.
TEST_F(SearchListTest, ShowsTheLatestQueryAlone) {
  list_->searchBar()->setText(QStringLiteral("the"));
  list_->searchBarSearchButtonClicked();
  list_->searchBar()->setText(QStringLiteral("zzzz"));
  list_->searchBarSearchButtonClicked();
  list_->searchBar()->setText(QStringLiteral("typed since, not searched for"));
  ASSERT_TRUE(waitFor([&] { return pages_ == 1 && !list_->hasBackgroundWork(); }));
  EXPECT_EQ(asked(), "/search/zzzz/0/99/0");
  EXPECT_EQ(list_->rows()->rowCount(), 0);
  EXPECT_FALSE(list_->notice().isEmpty());
}

TEST_F(SearchListTest, SurvivesASilentSite) {
  site_.setFault("/search", Fault{FaultKind::Close, {}, 1});
  search(QStringLiteral("the"));
  EXPECT_EQ(list_->rows()->torrents(), std::nullopt);
  EXPECT_TRUE(list_->notice().contains(QStringLiteral("did not come")));
  list_->didRefresh();
  arrive();
  EXPECT_EQ(list_->rows()->rowCount(), 31);
}

TEST_F(SearchListTest, WalksThroughTheWindow) {
  delegate_.reset();
  Application app(std::make_shared<NavigationController>(list_));
  ASSERT_TRUE(app.waitForItem("searchBar"));
  QQuickItem* input = app.item("searchBarInput");
  EXPECT_EQ(app.item("listNotice")->property("text"), QStringLiteral("Type what to look for."));
  EXPECT_FALSE(app.item("settingsBtn")->isVisible());
  EXPECT_FALSE(app.item("searchBarClear")->isVisible());
  app.click(input);
  EXPECT_TRUE(list_->searchBar()->isEditing());
  app.type(Qt::Key_Return);
  EXPECT_TRUE(site_.log().empty()) << "the return key of an empty bar does nothing";
  for (const Qt::Key key : {Qt::Key_T, Qt::Key_H, Qt::Key_E}) {
    app.type(key);
  }
  EXPECT_EQ(list_->searchBar()->text(), QStringLiteral("the"));
  app.click(app.item("listNotice"));
  EXPECT_FALSE(list_->searchBar()->isEditing()) << "a touch elsewhere gives up the keyboard";
  app.click(input);
  app.type(Qt::Key_Return);
  EXPECT_FALSE(list_->searchBar()->isEditing());
  ASSERT_TRUE(app.waitForRows(30));
  EXPECT_EQ(asked(), "/search/the/0/99/0");
  EXPECT_EQ(app.row(0)->mapToItem(app.item("searchBar"), QPointF()).y(), 45)
      << "no row hides under the bar";
  app.click(input);
  app.click(app.row(2));
  EXPECT_FALSE(list_->searchBar()->isEditing()) << "and so does one on a row";
  ASSERT_TRUE(waitFor([&] { return list_->navigationController()->depth() == 2; }));
  app.type(Qt::Key_Escape);
  ASSERT_TRUE(waitFor([&] { return list_->navigationController()->depth() == 1; }));
  app.type(Qt::Key_End);
  app.type(Qt::Key_Return);
  ASSERT_TRUE(app.waitForRows(60)) << "keys work on the list again";
  EXPECT_EQ(asked(), "/search/the/1/99/0");

  app.click(app.item("searchBarClear"));
  EXPECT_TRUE(list_->searchBar()->text().isEmpty());
  EXPECT_TRUE(list_->searchBar()->isEditing());
  EXPECT_EQ(list_->rows()->torrentCount(), 60);
  app.type(Qt::Key_Escape);
  EXPECT_FALSE(list_->searchBar()->isEditing());
  app.click(app.item("searchBtn"));
  ASSERT_TRUE(app.waitForItem("displaySettings"));
  EXPECT_EQ(qobject_cast<NavigationController*>(list_->navigationController())
                ->topViewController()
                ->title(),
            QStringLiteral("Search Settings"));
  app.type(Qt::Key_Escape);
  ASSERT_TRUE(waitFor([&] { return list_->navigationController()->depth() == 1; }));
  app.type(Qt::Key_End);
  app.type(Qt::Key_Return);
  ASSERT_TRUE(app.waitForRows(90));
  EXPECT_EQ(asked(), "/search/the/1/99/0") << "coming back from the settings is an appearance";
}

}  // namespace
}  // namespace veltramoor
