// What a person hears who does not see the screen: every control of every screen, and what happens.
#include <QAccessible>
#include <map>
#include <set>

#include "lists/EditFavoriteListViewController.h"
#include "lists/listings/FilterStore.h"
#include "remote/DownloadHistory.h"
#include "remote/ServerInfo.h"
#include "shell/KeySheetController.h"
#include "support/Application.h"
#include "support/RawServer.h"

namespace veltramoor {
namespace {

using test::Application;
using test::waitFor;

constexpr char kSecret[] = "s3cret-word";

class ScreenReaderTest : public test::ScreenTest {
 protected:
  /// A control as a screen reader finds it.
  struct Heard {
    QAccessible::Role role;
    std::string name;
    QAccessible::State state;
    QStringList actions;
    QObject* object;
  };

  /// Everything below `from` that is on show; what no reader may be told fails.
  static void walk(QAccessibleInterface* from, std::vector<Heard>& heard) {
    for (int i = 0; i < from->childCount(); ++i) {
      QAccessibleInterface* child = from->child(i);
      if (child == nullptr || !child->isValid() || child->state().invisible) {
        continue;
      }
      auto* actions = child->actionInterface();
      heard.push_back({child->role(), child->text(QAccessible::Name).toStdString(), child->state(),
                       actions != nullptr ? actions->actionNames() : QStringList(),
                       child->object()});
      for (const QAccessible::Text text :
           {QAccessible::Name, QAccessible::Value, QAccessible::Description}) {
        EXPECT_FALSE(child->text(text).contains(QLatin1String(kSecret))) << heard.back().name;
      }
      if (auto* text = child->textInterface()) {
        EXPECT_FALSE(text->text(0, text->characterCount()).contains(QLatin1String(kSecret)))
            << heard.back().name;
      }
      walk(child, heard);
    }
  }
  static std::vector<Heard> everything(const Application& app) {
    std::vector<Heard> heard;
    walk(QAccessible::queryAccessibleInterface(app.window()), heard);
    return heard;
  }
  static bool isControl(QAccessible::Role role) {
    static const std::set<QAccessible::Role> controls{
        QAccessible::PushButton,   QAccessible::CheckBox, QAccessible::RadioButton,
        QAccessible::EditableText, QAccessible::ListItem, QAccessible::PageTab,
        QAccessible::Slider,       QAccessible::ComboBox, QAccessible::MenuItem,
        QAccessible::Link};
    return controls.contains(role);
  }
  /// Every control has a name of its own, and something that can be done with it.
  static std::vector<Heard> expectUsable(const Application& app, const std::string& screen) {
    SCOPED_TRACE(screen);
    QCoreApplication::processEvents();
    const std::vector<Heard> heard = everything(app);
    std::map<std::string, int> names;
    for (const Heard& one : heard) {
      if (!isControl(one.role)) {
        continue;
      }
      const std::string what = one.name + " (" + one.object->objectName().toStdString() +
                               ", role " + std::to_string(one.role) + ")";
      EXPECT_FALSE(one.name.empty()) << what;
      EXPECT_FALSE(one.actions.isEmpty() && !one.state.disabled) << what;
      // Torrents of one name are told apart by their rows.
      const bool ofRow = one.object->objectName() == QLatin1String("sendButton");
      EXPECT_EQ(++names[ofRow ? what + std::to_string(names.size()) : one.name], 1)
          << "twice: " << what;
    }
    EXPECT_FALSE(names.empty());
    return heard;
  }
  static const Heard* find(const std::vector<Heard>& heard, const char* object) {
    const auto found = std::ranges::find_if(
        heard, [&](const Heard& one) { return one.object->objectName() == QLatin1String(object); });
    EXPECT_NE(found, heard.end()) << object;
    return found == heard.end() ? nullptr : &*found;
  }
  static bool says(const Application& app, const std::string& words) {
    return waitFor([&] {
      return std::ranges::any_of(everything(app), [&](const Heard& one) {
        return one.role == QAccessible::AlertMessage && one.name.find(words) != std::string::npos;
      });
    });
  }
};

TEST_F(ScreenReaderTest, EveryControlOfEveryScreenIsNamedOnceAndUsableAndNoSecretIsTold) {
  FilterStore::append("a+");
  FilterStore::append("(");
  DownloadHistory::append("One");
  DownloadHistory::append("Two");
  ServerInfo::sharedInstance().setPassword(kSecret);
  Application app(nullptr);
  app.click(app.item("anonymousLogin"));
  app.click(app.item("passwordInput"));
  app.typeText(kSecret);
  const auto login = expectUsable(app, "login");
  const Heard* password = find(login, "password");
  ASSERT_NE(password, nullptr);
  EXPECT_EQ(password->role, QAccessible::EditableText);
  EXPECT_EQ(password->name, "Password");
  EXPECT_TRUE(password->state.focusable && password->state.focused);
  app.click(app.item("infoButton"));
  expectUsable(app, "information");
  app.root().loginViewController()->returnView();
  app.click(app.item("anonymousLogin"));
  app.click(app.item("loginBtn"));
  ASSERT_TRUE(app.waitForItem("tabBar"));
  TabBarController& tabs = *app.root().tabBarController();
  const auto settled = [&] {
    return waitFor([&] {
      return tabs.viewControllers().front()->tabBarItem()->isEnabled() &&
             !tabs.viewControllers()[0]->hasBackgroundWork();
    });
  };
  ASSERT_TRUE(settled());
  for (const std::size_t tab : {0U, 1U, 2U, 3U, 4U, 6U, 8U}) {
    tabs.choose(tabs.viewControllers()[tab].get());
    ASSERT_TRUE(waitFor([&] { return tabs.viewControllers()[0]->tabBarItem()->isEnabled(); }));
    const auto heard = expectUsable(app, "tab " + std::to_string(tab));
    EXPECT_EQ(std::ranges::count_if(heard,
                                    [](const Heard& one) {
                                      return one.role == QAccessible::PageTab && one.state.selected;
                                    }),
              1);
    auto* stack = qobject_cast<NavigationController*>(tabs.viewControllers()[tab].get());
    if (auto* list = stack == nullptr
                         ? nullptr
                         : qobject_cast<AllListViewController*>(stack->topViewController())) {
      list->didSettings();
      expectUsable(app, "settings of tab " + std::to_string(tab));
      stack->popViewController();
    }
  }
  tabs.choose(tabs.moreNavigationController());
  expectUsable(app, "more");
  tabs.choose(tabs.viewControllers()[1].get());
  auto* favorites = qobject_cast<NavigationController*>(tabs.viewControllers()[1].get());
  favorites->pushViewController(
      std::make_shared<EditFavoriteListViewController>(TableViewStyle::Plain));
  ASSERT_TRUE(app.waitForItem("filterTable"));
  expectUsable(app, "filters");
  app.click(app.item("addFilterButton"));
  ASSERT_TRUE(app.waitForItem("favoriteCompose"));
  expectUsable(app, "a new filter");
  Presentation::sharedInstance().present(std::make_shared<KeySheetController>());
  expectUsable(app, "keys");
  Presentation::sharedInstance().dismiss();
  Alerts::showMessage("Title", "Message");
  expectUsable(app, "alert");
}

TEST_F(ScreenReaderTest, RowsTellWhereOneIsAndWhatWasSent) {
  const test::RawServer client(
      [](const test::RecordedRequest&) { return test::RawServer::response(200); });
  sendTo(client);
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  app.type(Qt::Key_Home);
  app.type(Qt::Key_Down);
  const std::string name = app.list().rows()->torrents()->at(1).name;
  const auto selected = [&] {
    std::vector<std::string> names;
    for (const Heard& one : everything(app)) {
      if (one.role == QAccessible::ListItem && one.state.selected) {
        names.push_back(one.name);
      }
    }
    return names;
  };
  ASSERT_EQ(selected().size(), 1U);
  EXPECT_TRUE(selected().front().starts_with(name + ", "));
  app.type(Qt::Key_Space);
  EXPECT_TRUE(says(app, "Sent " + name)) << name;
  ASSERT_EQ(selected().size(), 1U);
  EXPECT_TRUE(selected().front().ends_with(", sent"));
  const auto heard = everything(app);
  EXPECT_TRUE(std::ranges::any_of(heard, [&](const Heard& one) {
    return one.role == QAccessible::PushButton && one.name == "Send " + name + " again";
  }));
  EXPECT_TRUE(std::ranges::none_of(heard, [](const Heard& one) {
    return one.name.find("Send Load more") != std::string::npos;
  }));
}

}  // namespace
}  // namespace veltramoor
