// A row's menu in the real window: by finger, by the right button and by key.
#include <QAccessible>
#include <QClipboard>
#include <QDesktopServices>
#include <QPointingDevice>

#include "lists/EditFavoriteListViewController.h"
#include "lists/HistoryListViewController.h"
#include "lists/listings/FilterStore.h"
#include "remote/DownloadHistory.h"
#include "support/Application.h"
#include "support/RawServer.h"
#include "support/ScreenTest.h"

namespace veltramoor {
namespace {

using test::Application;
using test::waitFor;

/// Takes what would be opened in a browser.
class Browser : public QObject {
  Q_OBJECT

 public:
  Browser() { QDesktopServices::setUrlHandler(QStringLiteral("http"), this, "open"); }
  ~Browser() override { QDesktopServices::unsetUrlHandler(QStringLiteral("http")); }
  Q_INVOKABLE void open(const QUrl& url) { opened = url.toString().toStdString(); }

  std::string opened;
};

class RowMenuTest : public test::ScreenTest {
 protected:
  static PopupMenu& menu() { return PopupMenu::sharedInstance(); }
  static std::string copied() { return QGuiApplication::clipboard()->text().toStdString(); }
  static QAccessible::Role role(QQuickItem* item) {
    return QAccessible::queryAccessibleInterface(item)->role();
  }
  QPoint press(const Application& app, const QQuickItem* item, QPointF point = {150, 20}) {
    const QPoint at = item->mapToScene(point).toPoint();
    QTest::touchEvent(app.window(), finger_).press(0, at);
    return at;
  }
  void letGo(const Application& app, QPoint at) {
    QTest::touchEvent(app.window(), finger_).release(0, at);
  }
  // The entries are laid out with the next frame.
  static void choose(const Application& app, const char* entry) {
    ASSERT_TRUE(waitFor([&] { return app.item(entry) != nullptr && app.item(entry)->y() > 0; }));
    app.click(app.item(entry));
  }
  static void rightClick(const Application& app, QQuickItem* item, QPointF at) {
    QTest::mouseClick(app.window(), Qt::RightButton, {}, item->mapToScene(at).toPoint());
  }

  // For all cases: the toolkit keeps what it was once told of.
  static QPointingDevice* finger() {
    static QPointingDevice* const device = QTest::createTouchDevice();
    return device;
  }
  QPointingDevice* const finger_ = finger();
};

TEST_F(RowMenuTest, AFingerHeldStillOpensItAndSelectsNothing) {
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  const Torrent torrent = app.list().rows()->torrents()->at(2);
  QPoint at = press(app, app.row(2));
  ASSERT_TRUE(waitFor([&] { return app.item("rowMenu") != nullptr; }));
  letGo(app, at);
  EXPECT_TRUE(menu().isOpen());
  EXPECT_EQ(menu().entries(),
            (QStringList{"Send", "Copy magnet link", "Copy name", "Open in the browser"}));
  EXPECT_EQ(menu().title().toStdString(), torrent.name);
  choose(app, "menuEntry1");
  EXPECT_FALSE(menu().isOpen());
  EXPECT_EQ(copied(), torrent.downloadUrl);
  rightClick(app, app.row(2), {150, 20});
  choose(app, "menuEntry2");
  EXPECT_EQ(copied(), torrent.name);
  rightClick(app, app.row(2), {150, 20});
  ASSERT_TRUE(app.waitForItem("rowMenu"));
  app.click(app.item("besideMenu"), {5, 5});
  EXPECT_FALSE(menu().isOpen());

  // A finger that moves means something else, however long it stays then.
  at = press(app, app.row(1));
  QTest::touchEvent(app.window(), finger_).move(0, at + QPoint(40, 0));
  QTest::qWait(700);
  EXPECT_FALSE(menu().isOpen());
  QTest::touchEvent(app.window(), finger_).move(0, at + QPoint(40, -200));
  letGo(app, at + QPoint(40, -200));
  ASSERT_TRUE(waitFor([&] { return !app.item("torrentTable")->property("moving").toBool(); }));
  EXPECT_EQ(site_.log().size(), 1U) << "no torrent was opened";
}

TEST_F(RowMenuTest, WorksByKeyAndLeadsTheFocusBack) {
  const test::RawServer client(
      [](const test::RecordedRequest&) { return test::RawServer::response(200); });
  sendTo(client);
  Browser browser;
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  const std::vector<Torrent> torrents = *app.list().rows()->torrents();
  app.type(Qt::Key_Home);
  app.type(Qt::Key_Menu);
  ASSERT_EQ(app.focused(), "menuEntry0");
  EXPECT_EQ(role(app.item("menuBox")), QAccessible::PopupMenu);
  EXPECT_EQ(role(app.item("menuEntry0")), QAccessible::MenuItem);
  app.type(Qt::Key_F5);
  app.type(Qt::Key_Escape);
  EXPECT_FALSE(menu().isOpen());
  EXPECT_EQ(app.focused(), "torrentRow");
  EXPECT_EQ(site_.log().size(), 1U) << "nothing beneath took the key";

  for (const auto& [keys, entry] :
       {std::pair(std::vector{Qt::Key_Up}, "menuEntry3"),
        std::pair(std::vector{Qt::Key_Down, Qt::Key_Home}, "menuEntry0"),
        std::pair(std::vector{Qt::Key_End, Qt::Key_Tab}, "menuEntry0"),
        std::pair(std::vector{Qt::Key_End}, "menuEntry3")}) {
    app.type(Qt::Key_Menu);
    for (const Qt::Key key : keys) {
      app.type(key);
    }
    EXPECT_EQ(app.focused(), entry);
    app.type(Qt::Key_Escape);
  }
  QTest::keyClick(app.window(), Qt::Key_F10, Qt::ShiftModifier);
  app.type(Qt::Key_End);
  app.type(Qt::Key_Return);
  EXPECT_EQ(browser.opened, "http://" + site_.host() + torrents[0].detailsUrl);
  EXPECT_EQ(app.focused(), "torrentRow");
  app.type(Qt::Key_Down);
  QTest::keyClick(app.window(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(copied(), torrents[1].downloadUrl);
  app.list().tableView()->setAllowsSelection(false);
  app.type(Qt::Key_Menu);
  app.type(Qt::Key_Space);
  ASSERT_TRUE(waitFor([&] { return app.list().rows()->torrents()->at(1).isDownloaded; }));
  app.type(Qt::Key_End);
  app.type(Qt::Key_Menu);
  EXPECT_FALSE(menu().isOpen()) << "there is nothing to do with \"load more\"";
}

TEST_F(RowMenuTest, StaysInTheWindow) {
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  for (const QSize size : {QSize(320, 300), QSize(320, 150), QSize(768, 1024)}) {
    app.window()->resize(size);
    ASSERT_TRUE(waitFor([&] { return app.item("rootScreen")->size() == size; }));
    for (const double x : {0.0, size.width() / 2.0, size.width() - 1.0}) {
      for (double y = 0; y < size.height(); y += 37) {
        app.list().menu()->open(0, QRectF(x, y, 0, 37), false);
        QQuickItem* box = app.item("menuBox");
        ASSERT_TRUE(waitFor([&] { return app.item("menuEntry3")->y() > 0; }));
        EXPECT_TRUE(QRectF({}, size).contains(QRectF(box->mapToScene({}), box->size())))
            << x << ", " << y << " in " << size.width() << " x " << size.height();
        EXPECT_GE(app.item("menuEntry0")->height(), 44);
      }
    }
    menu().close();
  }
}

TEST_F(RowMenuTest, DeletesWhatCanBeUndone) {
  for (const char* name : {"a", "b", "c"}) {
    DownloadHistory::append(name);
    FilterStore::append(name);
  }
  const auto history = std::make_shared<HistoryListViewController>(TableViewStyle::Plain);
  const auto filters = std::make_shared<EditFavoriteListViewController>(TableViewStyle::Plain);
  auto navigation = std::make_shared<NavigationController>(history);
  Application app(navigation);
  ASSERT_TRUE(app.waitForItem("historyTable"));
  const auto walk = [&](const QStringList& entries) {
    app.type(Qt::Key_Home);
    app.type(Qt::Key_Down);
    app.type(Qt::Key_Menu);
    EXPECT_EQ(menu().entries(), entries);
    app.type(Qt::Key_Return);
    EXPECT_EQ(copied(), "b");
    QGuiApplication::clipboard()->clear();
    app.type(Qt::Key_Menu);
    app.type(Qt::Key_Down);
    app.type(Qt::Key_Return);
  };
  const std::vector<std::string> all{"a", "b", "c"};
  const std::vector<std::string> left{"a", "c"};
  walk({"Copy name", "Delete"});
  EXPECT_EQ(DownloadHistory::names(), left);
  QTest::keyClick(app.window(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(DownloadHistory::names(), all);
  navigation->pushViewController(filters);
  ASSERT_TRUE(app.waitForItem("filterTable"));
  EXPECT_GE(app.item("filterRow")->height(), 44);
  walk({"Copy", "Delete"});
  EXPECT_EQ(FilterStore::regexes(), left);
  QTest::keyClick(app.window(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(FilterStore::regexes(), all);
  const QQuickItem* row = app.item("filterRow");
  EXPECT_EQ(row->y(), 0) << "which none of this moved";
  QPoint at = press(app, row);
  ASSERT_TRUE(app.waitForItem("rowMenu"));
  letGo(app, at);
  app.type(Qt::Key_Escape);
  EXPECT_FALSE(menu().isOpen());
  EXPECT_EQ(navigation->depth(), 2) << "only the menu";

  at = press(app, row);
  for (int i = 0; i < 12; ++i) {
    at -= QPoint(10, 0);
    QTest::touchEvent(app.window(), finger_).move(0, at);
  }
  letGo(app, at);
  QQuickItem* button = app.item("deleteButton");
  ASSERT_TRUE(waitFor([&] { return button->x() == row->width() - button->width(); }));
  EXPECT_EQ(FilterStore::regexes(), all) << "a swipe alone deletes nothing";
  letGo(app, press(app, button, {40, 20}));
  EXPECT_EQ(FilterStore::regexes(), (std::vector<std::string>{"b", "c"}));
  letGo(app, press(app, app.item("undoButton"), {40, 20}));
  EXPECT_EQ(FilterStore::regexes(), all);
}

}  // namespace
}  // namespace veltramoor

#include "RowMenuTest.moc"
