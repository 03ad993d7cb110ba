// Filters in the real window: the list of them, the form for a new one, and what they do.
#include <QAbstractItemModelTester>
#include <QElapsedTimer>

#include "lists/EditFavoriteListViewController.h"
#include "lists/FavoriteListViewController.h"
#include "lists/listings/FilterStore.h"
#include "support/Application.h"
#include "support/FileStore.h"
#include "toolkit/Presentation.h"

namespace veltramoor {
namespace {

using test::Application;
using test::itemNamed;
using test::waitFor;

class FavoriteFormsTest : public test::ScreenTest {
 protected:
  ~FavoriteFormsTest() override { Presentation::sharedInstance().dismiss(); }

  static FavoriteComposeViewController* form() {
    return qobject_cast<FavoriteComposeViewController*>(
        Presentation::sharedInstance().controller());
  }
  static void write(const Application& app, const QString& text) {
    for (const QChar character : text) {
      QTest::keyClick(app.window(), character.toLatin1());
    }
  }
  static QQuickItem* filterRow(const Application& app, int row) {
    QQuickItem* found = nullptr;
    EXPECT_TRUE(waitFor([&] {
      QMetaObject::invokeMethod(app.item("filterTable"), "itemAtIndex",
                                Q_RETURN_ARG(QQuickItem*, found), Q_ARG(int, row));
      return found != nullptr;
    }));
    return found;
  }
};

TEST_F(FavoriteFormsTest, TheFirstFilterIsTypedStoredAndShown) {
  store_.setString("Veltramoor_favoritesCount", "2");
  auto list = std::make_shared<FavoriteListViewController>(TableViewStyle::Plain);
  Application app(std::make_shared<NavigationController>(list));
  ASSERT_TRUE(waitFor([&] { return list->pagesAsked() == 2 && list->pagesDelivered() == 2; }));
  EXPECT_FALSE(app.item("batchProgress")->isVisible());
  const QQuickItem* notice = app.item("listNotice");
  EXPECT_TRUE(waitFor([&] {
    return app.row(0)->mapToItem(notice, QPointF()).y() >= notice->height();
  })) << "what is to be done comes before \"load more\"";
  app.click(app.item("noticeButton"));
  ASSERT_TRUE(app.waitForItem("favoriteCompose")) << "without filters the form opens at once";
  ASSERT_TRUE(waitFor([&] { return app.item("newItemInput")->hasActiveFocus(); }));
  EXPECT_EQ(form()->matchNote(), QStringLiteral("An empty filter accepts every torrent."));

  write(app, QStringLiteral("a(e"));
  EXPECT_FALSE(form()->isValid());
  EXPECT_TRUE(app.item("problemText")->isVisible());
  EXPECT_TRUE(app.item("problemMark")->isVisible());
  const QQuickItem* input = app.item("newItemInput");
  EXPECT_TRUE(waitFor([&] {
    return app.item("problemMark")->property("at").toReal() ==
           input->x() + input->property("cursorRectangle").toRectF().x();
  })) << "the mark is where the bracket is missing";
  EXPECT_FALSE(app.item("saveFilter")->isEnabled());
  app.click(app.item("saveFilter"));
  EXPECT_NE(form(), nullptr);
  EXPECT_TRUE(FilterStore::regexes().empty()) << "a wrong one is not stored";
  write(app, QStringLiteral("|o)"));
  app.type(Qt::Key_Home);
  app.type(Qt::Key_Delete);
  EXPECT_EQ(form()->newItem()->text(), QStringLiteral("(e|o)"));
  EXPECT_TRUE(form()->isValid());
  EXPECT_FALSE(app.item("problemText")->isVisible());
  EXPECT_TRUE(app.item("matchNote")->isVisible());
  EXPECT_TRUE(form()->matchNote().endsWith(QStringLiteral("of the 60 torrents seen last.")));
  app.type(Qt::Key_Return);
  EXPECT_FALSE(app.item("newItemInput")->hasActiveFocus()) << "the keyboard goes";
  EXPECT_NE(form(), nullptr);
  app.click(app.item("saveFilter"));
  ASSERT_EQ(form(), nullptr);
  EXPECT_EQ(FilterStore::regexes(), std::vector<std::string>{"(e|o)"});
  EXPECT_EQ(itemNamed(filterRow(app, 0), QStringLiteral("rowName"))->property("text"),
            QStringLiteral("(e|o)"));

  app.click(app.item("filtersBackButton"));
  ASSERT_TRUE(app.waitForItem("refreshBtn"));
  const QQuickItem* progress = app.item("batchProgress");
  bool progressSeen = false;
  QObject::connect(progress, &QQuickItem::visibleChanged, app.window(),
                   [&] { progressSeen = progressSeen || progress->isVisible(); });
  app.click(app.item("refreshBtn"));
  ASSERT_TRUE(waitFor([&] { return list->rows()->torrentCount() > 20; })) << "and it is used";
  EXPECT_TRUE(progressSeen) << "however soon the pages came";
  ASSERT_TRUE(waitFor([&] { return !list->hasBackgroundWork(); }));
}

TEST_F(FavoriteFormsTest, FiltersAreDeletedBySwipeAndByKeyAndBadOnesSaySo) {
  store_.setArray("Veltramoor_filters", {"one", "(bad", "", "<b>four</b>", "one"});
  const auto edit = std::make_shared<EditFavoriteListViewController>(TableViewStyle::Plain);
  const QAbstractItemModelTester tester(edit->filters(),
                                        QAbstractItemModelTester::FailureReportingMode::Warning);
  Application app(std::make_shared<NavigationController>(
      std::make_shared<FavoriteListViewController>(TableViewStyle::Plain)));
  auto* navigation = qobject_cast<NavigationController*>(app.list().navigationController());
  navigation->pushViewController(edit);
  ASSERT_TRUE(app.waitForItem("filterTable"));
  EXPECT_EQ(form(), nullptr);
  EXPECT_EQ(app.item("navigationTitle")->property("text"), QStringLiteral("Favorite filters"));
  EXPECT_TRUE(itemNamed(filterRow(app, 1), QStringLiteral("rowProblem"))->isVisible());
  EXPECT_FALSE(itemNamed(filterRow(app, 0), QStringLiteral("rowProblem"))->isVisible());
  EXPECT_EQ(itemNamed(filterRow(app, 3), QStringLiteral("rowName"))->property("text"),
            QStringLiteral("<b>four</b>"));

  const QPoint from = filterRow(app, 1)->mapToScene({250, 20}).toPoint();
  QTest::mousePress(app.window(), Qt::LeftButton, {}, from);
  for (int x = 10; x <= 120; x += 10) {
    QTest::mouseMove(app.window(), from - QPoint(x, 0));
  }
  QTest::mouseRelease(app.window(), Qt::LeftButton, {}, from - QPoint(120, 0));
  EXPECT_EQ(FilterStore::regexes().size(), 5U) << "a swipe alone deletes nothing";
  QQuickItem* button = itemNamed(filterRow(app, 1), QStringLiteral("deleteButton"));
  ASSERT_TRUE(waitFor([&] { return button->isVisible(); }));
  ASSERT_TRUE(waitFor([&] {
    app.click(button);
    return FilterStore::regexes().size() == 4;
  }));
  EXPECT_EQ(FilterStore::regexes(), (std::vector<std::string>{"one", "", "<b>four</b>", "one"}));
  EXPECT_TRUE(FilterStore::append("five"));
  app.click(app.item("undoButton"));
  EXPECT_EQ(FilterStore::regexes(),
            (std::vector<std::string>{"one", "(bad", "", "<b>four</b>", "one", "five"}));
  EXPECT_EQ(edit->filters()->regexes(), FilterStore::regexes());
  edit->commitEditingStyle(EditFavoriteListViewController::EditingStyle::Delete, 5);
  edit->commitEditingStyle(EditFavoriteListViewController::EditingStyle::Delete, 1);

  app.item("filterTable")->forceActiveFocus();
  app.type(Qt::Key_Delete);
  EXPECT_EQ(FilterStore::regexes().size(), 4U) << "no row is current yet";
  app.type(Qt::Key_End);
  app.hold(Qt::Key_Backspace);
  EXPECT_EQ(FilterStore::regexes(), (std::vector<std::string>{"one", "", "<b>four</b>"}))
      << "one filter, however long the key is held";
  EXPECT_EQ(edit->filters()->rowCount(), 3);
  edit->commitEditingStyle(EditFavoriteListViewController::EditingStyle::Insert, 0);
  edit->commitEditingStyle(EditFavoriteListViewController::EditingStyle::Delete, 3);
  EXPECT_EQ(edit->filters()->rowCount(), 3);

  app.click(app.item("addFilterButton"));
  ASSERT_TRUE(app.waitForItem("favoriteCompose"));
  app.type(Qt::Key_Escape);
  EXPECT_EQ(form(), nullptr) << "cancelled";
  EXPECT_EQ(FilterStore::regexes().size(), 3U);
  app.click(app.item("addFilterButton"));
  edit->didUpdateList(form(), " one (");
  EXPECT_EQ(FilterStore::regexes().back(), " one (") << "stored as it is";
  EXPECT_EQ(edit->filters()->rowCount(), 4);
  app.type(Qt::Key_Escape);
  EXPECT_EQ(navigation->depth(), 1);
  ASSERT_TRUE(waitFor([&] { return !app.list().hasBackgroundWork(); }));
}

TEST_F(FavoriteFormsTest, AHostileExpressionDoesNotStopTheTyping) {
  const std::vector<std::string> names(300, std::string(80, 'a') + "!");
  FavoriteComposeViewController compose({}, names);
  compose.appear();
  compose.newItem()->setText(QStringLiteral("aaa"));
  EXPECT_EQ(compose.matchNote(), QStringLiteral("Accepts 300 of the 300 torrents seen last."));
  QElapsedTimer clock;
  clock.start();
  compose.newItem()->setText(QStringLiteral("(a+)+$"));
  EXPECT_LT(clock.elapsed(), 500);
  EXPECT_TRUE(compose.matchNote().contains(QStringLiteral("given up on")));
  EXPECT_TRUE(compose.isValid());
  compose.newItem()->setText(QStringLiteral("\\N{nope}"));
  EXPECT_EQ(compose.problemOffset(), -1);
  EXPECT_FALSE(compose.problem().isEmpty());
  compose.updateList();
  compose.cancel();
}

TEST_F(FavoriteFormsTest, WhatTheStoreRefusesStaysInTheFormAndInTheList) {
  test::FileStore file;
  EXPECT_TRUE(FilterStore::append("one"));
  const auto edit = std::make_shared<EditFavoriteListViewController>(TableViewStyle::Plain);
  edit->addFavorite();
  {
    const test::FullDisk fullDisk;
    edit->didUpdateList(form(), "two");
    edit->commitEditingStyle(EditFavoriteListViewController::EditingStyle::Delete, 0);
  }
  EXPECT_NE(form(), nullptr) << "what was typed is not lost";
  EXPECT_EQ(edit->filters()->rowCount(), 1);
  EXPECT_EQ(FilterStore::regexes(), std::vector<std::string>{"one"});
  edit->didUpdateList(form(), "two");
  EXPECT_EQ(form(), nullptr);
  EXPECT_EQ(FilterStore::regexes(), (std::vector<std::string>{"one", "two"}));
  EXPECT_EQ(edit->filters()->rowCount(), 2);
}

}  // namespace
}  // namespace veltramoor
