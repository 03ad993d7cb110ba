// The list of what was sent, and deleting from it.
#include "lists/HistoryListViewController.h"

#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <algorithm>
#include <numeric>

#include "remote/DownloadHistory.h"
#include "support/Application.h"
#include "support/FileStore.h"

namespace veltramoor {
namespace {

using test::Application;
using test::itemNamed;
using test::waitFor;

/// One letter an entry, for short.
std::vector<std::string> letters(std::string_view text) {
  std::vector<std::string> names;
  for (const char letter : text) {
    names.emplace_back(1, letter);
  }
  return names;
}

class HistoryListTest : public test::ScreenTest {
 protected:
  void store(std::string_view text) {
    store_.setArray("Veltramoor_torrentHistory", letters(text));
    list_->reloadHistory();
  }
  [[nodiscard]] static std::string stored() {
    const std::vector<std::string> names = DownloadHistory::names();
    return std::accumulate(names.begin(), names.end(), std::string());
  }
  /// What the rows read, from the top.
  [[nodiscard]] std::string shown() const {
    std::string text;
    for (int row = 0; row < list_->rows()->rowCount(); ++row) {
      const QModelIndex index = list_->rows()->index(row);
      text += index.data(HistoryTableModel::NameRole).toString().toStdString();
    }
    return text;
  }
  void remove(int row) {
    list_->commitEditingStyle(HistoryListViewController::EditingStyleDelete, row);
  }

  // Gone in tests of the window, which has its own.
  std::optional<VeltramoorAppDelegate> delegate_{std::in_place};
  std::shared_ptr<HistoryListViewController> list_ =
      std::make_shared<HistoryListViewController>(TableViewStyle{});
  QAbstractItemModelTester tester_{list_->rows(),
                                   QAbstractItemModelTester::FailureReportingMode::Warning};
};

TEST_F(HistoryListTest, ReadsTheStoredHistoryNewestFirstAtEachAppearance) {
  EXPECT_EQ(list_->tabBarItem()->title(), QStringLiteral("D/l History"));
  EXPECT_EQ(list_->tabBarItem()->image(), QStringLiteral("tabbar-snatch.png"));
  EXPECT_EQ(list_->rows()->rowCount(), 0);
  EXPECT_FALSE(list_->notice().isEmpty());
  const QSignalSpy resets(list_->rows(), &QAbstractItemModel::modelReset);
  for (const std::string_view history :
       {"abc", "abcd", "abcda", "bcda", "cabdd", "", "aaa", "aa", "xyz", "zyx", "qzyqxq", "q"}) {
    store_.setArray("Veltramoor_torrentHistory", letters(history));
    list_->viewWillAppear();
    EXPECT_EQ(shown(), std::string(history.rbegin(), history.rend()));
    EXPECT_EQ(list_->notice().isEmpty(), !history.empty());
  }
  EXPECT_TRUE(resets.isEmpty());
  // The 51st send: one row comes, one goes.
  store("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWX");
  QSignalSpy inserted(list_->rows(), &QAbstractItemModel::rowsInserted);
  QSignalSpy removed(list_->rows(), &QAbstractItemModel::rowsRemoved);
  DownloadHistory::append("Y");
  list_->viewWillAppear();
  EXPECT_EQ(inserted.size(), 1);
  EXPECT_EQ(removed.size(), 1);
  EXPECT_EQ(shown().front(), 'Y');
  EXPECT_EQ(shown().size(), 50U);
}

TEST_F(HistoryListTest, DeletesFromTheStoreWhatTheRowShowsAndFromTheCopyItsMirrorImage) {
  struct Case {
    const char* history;
    std::vector<int> rows;
    const char* stored;
    const char* shown;
  };
  for (const Case& one : {
           Case{"abc", {0}, "ab", "cb"},
           Case{"abc", {1}, "ac", "ca"},
           Case{"abc", {2}, "bc", "ba"},
           Case{"a", {0}, "", ""},
           Case{"abcd", {0, 0}, "abc", "dc"},
           Case{"aba", {0}, "ab", "ab"},
           Case{"abc", {3}, "abc", "cba"},
           Case{"abc", {-1}, "abc", "cba"},
       }) {
    SCOPED_TRACE(one.history + testing::PrintToString(one.rows));
    store(one.history);
    for (std::size_t i = 0; i < one.rows.size(); ++i) {
      remove(one.rows[i]);
      if (i == 0 && one.rows.size() > 1) {
        EXPECT_EQ(stored(), "abc");
        EXPECT_EQ(shown(), "dcb");
        DownloadHistory::append("d");  // a send in between
      }
    }
    EXPECT_EQ(stored(), one.stored);
    EXPECT_EQ(shown(), one.shown);
    list_->viewWillAppear();
    const std::string history = stored();
    EXPECT_EQ(shown(), std::string(history.rbegin(), history.rend())) << "right when read anew";
  }
  store("ab");
  list_->commitEditingStyle(HistoryListViewController::EditingStyleInsert, 0);
  list_->commitEditingStyle(HistoryListViewController::EditingStyleNone, 0);
  EXPECT_EQ(stored(), "ab");
  // A store that another program has shortened meanwhile.
  store_.setArray("Veltramoor_torrentHistory", {});
  remove(0);
  EXPECT_EQ(stored(), "");
  EXPECT_EQ(shown(), "b");
}

TEST_F(HistoryListTest, AnEntryThatTheStoreDoesNotLetGoIsShownAgain) {
  test::FileStore file;
  for (const std::string name : {"a", "b", "c"}) {
    EXPECT_TRUE(DownloadHistory::append(name));
  }
  list_->reloadHistory();
  {
    const test::FullDisk fullDisk;
    remove(0);
    EXPECT_EQ(shown(), "cba");
  }
  // Told here, and not to the window of a later case.
  EXPECT_TRUE(test::deliver());
  EXPECT_EQ(delegate_->alertView()->title(), QStringLiteral("Not saved."));
  EXPECT_EQ(stored(), "abc");
  EXPECT_FALSE(list_->removal()->isOpen());
  remove(0);
  EXPECT_EQ(stored(), "ab");
  delegate_->alertView()->dismissWithButtonIndex(0);
  {
    const test::FullDisk fullDisk;
    list_->removal()->undo();
    EXPECT_EQ(stored(), "ab");
  }
  EXPECT_TRUE(test::deliver());
  EXPECT_EQ(delegate_->alertView()->title(), QStringLiteral("Not saved."));
  EXPECT_TRUE(list_->removal()->isOpen()) << "to be tried again";
  list_->removal()->undo();
  EXPECT_EQ(stored(), "abc");
  EXPECT_EQ(shown(), "cba");
}

class HistoryWindowTest : public HistoryListTest {
 protected:
  // Rows that went are drawn until the next frame, and those below them stand where they stood.
  QQuickItem* rowItem(const Application& app, int row) {
    QQuickItem* found = nullptr;
    EXPECT_TRUE(waitFor([&] {
      const auto drawn =
          app.item("historyTable")->property("contentItem").value<QQuickItem*>()->childItems();
      if (std::ranges::count(drawn, QStringLiteral("historyRow"), &QObject::objectName) !=
          list_->rows()->rowCount()) {
        return false;
      }
      QMetaObject::invokeMethod(app.item("historyTable"), "itemAtIndex",
                                Q_RETURN_ARG(QQuickItem*, found), Q_ARG(int, row));
      return found != nullptr && found->y() == 37 * row;
    }));
    return found;
  }
  // What went is gone, and what takes its place takes fingers.
  static void waitForFrame(const Application& app) {
    bool drawn = false;
    QObject::connect(
        app.window(), &QQuickWindow::frameSwapped, app.window(), [&drawn] { drawn = true; },
        Qt::SingleShotConnection);
    app.window()->update();
    EXPECT_TRUE(waitFor([&drawn] { return drawn; }));
  }
  void swipe(const Application& app, int row, double from, double to) {
    const QQuickItem* item = rowItem(app, row);
    const auto at = [&](double x) { return item->mapToScene(QPointF(x, 18)).toPoint(); };
    QTest::mousePress(app.window(), Qt::LeftButton, {}, at(from));
    for (double x = from; x > to; x -= 10) {
      QTest::mouseMove(app.window(), at(x));
    }
    QTest::mouseMove(app.window(), at(to));
    QTest::mouseRelease(app.window(), Qt::LeftButton, {}, at(to));
  }
};

TEST_F(HistoryWindowTest, DeletesByKeyBySwipeAndByButton) {
  store("abcde");
  delegate_.reset();
  Application app(std::make_shared<NavigationController>(list_));
  ASSERT_TRUE(app.waitForItem("historyList"));
  EXPECT_FALSE(app.item("navigationBar")->isVisible());
  EXPECT_EQ(rowItem(app, 1)->y(), 37);
  EXPECT_EQ(itemNamed(rowItem(app, 0), QStringLiteral("rowName"))->property("text"),
            QStringLiteral("e"));

  app.type(Qt::Key_Delete);
  EXPECT_EQ(stored(), "abcde") << "no row is current yet";
  app.type(Qt::Key_Home);
  app.type(Qt::Key_Down);
  app.type(Qt::Key_Down);
  app.hold(Qt::Key_Delete);
  EXPECT_EQ(stored(), "abde") << "one entry, however long the key is held";
  app.type(Qt::Key_Delete);
  EXPECT_EQ(stored(), "abde") << "and none by what the rows read until they are right";
  ASSERT_TRUE(waitFor([this] { return shown() == "edba"; }));
  EXPECT_EQ(app.item("historyTable")->property("currentIndex").toInt(), 2);

  swipe(app, 0, 200, 180);
  EXPECT_EQ(stored(), "abde") << "a short swipe springs back";
  swipe(app, 0, 200, 100);
  EXPECT_EQ(stored(), "abde");
  QQuickItem* button = itemNamed(rowItem(app, 0), QStringLiteral("deleteButton"));
  const QQuickItem* name = itemNamed(rowItem(app, 0), QStringLiteral("rowName"));
  ASSERT_TRUE(waitFor([&] { return button->x() == rowItem(app, 0)->width() - button->width(); }));
  EXPECT_EQ(name->mapToScene({}).x(), 5) << "the name stays";
  EXPECT_LT(name->x() + name->width(), button->x());
  app.click(rowItem(app, 1));
  ASSERT_TRUE(waitFor([&] { return !button->isVisible(); })) << "a tap elsewhere shuts it";
  EXPECT_EQ(stored(), "abde");
  swipe(app, 0, 200, 100);
  ASSERT_TRUE(waitFor([&] { return button->isVisible(); }));
  app.click(button);
  EXPECT_EQ(stored(), "abd");
  ASSERT_TRUE(waitFor([this] { return shown() == "dba"; }));

  waitForFrame(app);
  swipe(app, 0, 350, 20);
  EXPECT_EQ(stored(), "abd") << "nor does one right across";
  app.type(Qt::Key_Home);
  app.type(Qt::Key_Delete);
  ASSERT_TRUE(waitFor([this] { return shown() == "ba"; }));
  app.type(Qt::Key_Delete);
  ASSERT_TRUE(waitFor([this] { return shown() == "a"; }));
  EXPECT_EQ(app.item("historyTable")->property("currentIndex").toInt(), 0);
  app.type(Qt::Key_Delete);
  ASSERT_TRUE(waitFor([this] { return shown().empty(); }));
  EXPECT_TRUE(app.item("listNotice")->isVisible());
  EXPECT_TRUE(site_.log().empty());
}

TEST_F(HistoryWindowTest, TheNewestDeletionCanBeUndoneForAWhile) {
  store("abc");
  delegate_.reset();
  Application app(std::make_shared<NavigationController>(list_));
  ASSERT_TRUE(app.waitForItem("historyList"));
  const auto removeTop = [&](const char* left) {
    app.type(Qt::Key_Home);
    app.type(Qt::Key_Delete);
    EXPECT_TRUE(waitFor([&] { return shown() == left; })) << shown();
  };
  // What a screen reader reads when the line comes.
  QStringList heard;
  const QQuickItem* line = app.item("removedLine");
  const QQuickItem* text = app.item("removedText");
  QObject::connect(line, &QQuickItem::visibleChanged, app.window(), [&heard, line, text] {
    if (line->isVisible()) {
      heard.append(text->property("text").toString());
    }
  });
  removeTop("ba");
  removeTop("a");
  EXPECT_EQ(heard, (QStringList{"Removed c", "Removed b"}));
  QQuickItem* undo = app.item("undoButton");
  EXPECT_GE(undo->height(), 44);
  DownloadHistory::append("d");
  app.type(Qt::Key_Tab);
  ASSERT_EQ(app.focused(), "undoButton");
  app.type(Qt::Key_Space);
  EXPECT_EQ(stored(), "abd") << "of the newest alone, and before what was sent meanwhile";
  EXPECT_EQ(shown(), "dba");
  EXPECT_FALSE(app.item("removedLine")->isVisible());
  removeTop("ba");
  app.click(undo);
  EXPECT_EQ(stored(), "abd");
  QElapsedTimer clock;
  clock.start();
  removeTop("ba");
  ASSERT_TRUE(waitFor([&] { return !list_->removal()->isOpen(); }));
  EXPECT_GE(clock.elapsed(), RemovalOffer::kDuration.count() - 500);
  list_->removal()->undo();
  EXPECT_EQ(stored(), "ab") << "too late";
  EXPECT_TRUE(app.item("historyTable")->hasActiveFocus());
  removeTop("a");
  list_->viewWillDisappear();
  EXPECT_FALSE(list_->removal()->isOpen()) << "another screen is on show";
}

}  // namespace
}  // namespace veltramoor
