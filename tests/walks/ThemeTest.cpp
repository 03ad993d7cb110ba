// The screens' colours, and what they do with the wishes that a person has of the system.
#include <QColor>
#include <QQmlComponent>
#include <cmath>

#include "lists/FavoriteListViewController.h"
#include "remote/screens/ServerSettingsViewController.h"
#include "settings/FavoriteDisplaySettingsViewController.h"
#include "settings/RecentDisplaySettingsViewController.h"
#include "support/Application.h"
#include "support/ScreenTest.h"

namespace veltramoor {
namespace {

using test::Application;
using test::waitFor;

class ThemeTest : public test::ScreenTest {
 protected:
  ~ThemeTest() override {
    device_.setTextScale(1);
    device_.setHighContrast(false);
    device_.setReducedMotion(false);
  }

  Device& device_ = Device::sharedInstance();
};

double luminance(const QColor& color) {
  const auto linear = [](float part) {
    return part <= 0.04045F ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}
// 1 to 21, as the Web Content Accessibility Guidelines 2.1 have it.
double contrast(const QColor& text, const QColor& ground) {
  const auto [darker, lighter] = std::minmax({luminance(text), luminance(ground)});
  return (lighter + 0.05) / (darker + 0.05);
}
QColor over(const QColor& top, const QColor& below, float opacity) {
  const auto mixed = [&](float a, float b) { return a * opacity + b * (1 - opacity); };
  return QColor::fromRgbF(mixed(top.redF(), below.redF()), mixed(top.greenF(), below.greenF()),
                          mixed(top.blueF(), below.blueF()));
}

TEST_F(ThemeTest, WhatIsWrittenCanBeRead) {
  const VeltramoorAppDelegate delegate;
  QQmlEngine engine;
  engine.addImportPath("qrc:/qt/qml");
  QQmlComponent component(&engine);
  component.setData("import QtQml\nimport Veltramoor\nQtObject { property var theme: Theme }", {});
  const std::unique_ptr<QObject> holder(component.create());
  ASSERT_NE(holder, nullptr) << component.errorString().toStdString();
  const auto* theme = holder->property("theme").value<QObject*>();
  const auto color = [theme](const char* name) { return theme->property(name).value<QColor>(); };
  const std::vector<std::pair<const char*, std::vector<const char*>>> written{
      {"text", {"ground", "row", "rowPressed", "raised", "edge", "field", "bar"}},
      {"textStrong", {"ground", "row", "rowPressed", "raised", "edge", "barPlain", "erase"}},
      {"accent", {"ground", "row", "raised", "bar"}},
      {"faint", {"ground", "edge", "field"}},
      {"trouble", {"ground"}},
      {"accentText", {"accent", "trouble"}}};
  for (const bool high : {false, true}) {
    device_.setHighContrast(high);
    for (const auto& [text, grounds] : written) {
      for (const char* ground : grounds) {
        EXPECT_GE(contrast(color(text), color(ground)), 4.5) << text << " on " << ground << high;
      }
    }
    const QColor strong = color("textStrong");
    const QColor light = color("pressed");
    EXPECT_GE(contrast(strong, over(light, color("raised"), light.alphaF())), 4.5);
    // The loading box lets a tenth of what is beneath it through.
    for (const QColor& beneath : {color("ground"), QColor(Qt::white)}) {
      EXPECT_GE(contrast(over(strong, beneath, 0.9F), over(color("box"), beneath, 0.9F)), 4.5);
    }
    EXPECT_GE(contrast(color("text"), color("ground")), high ? 15 : 7);
  }
}

// No text wider than its place, and none that reaches out of the window.
void expectNoneCut(QQuickItem* item) {
  if (item->inherits("QQuickText")) {
    const std::string text = item->property("text").toString().toStdString();
    EXPECT_LE(item->property("contentWidth").toDouble(), item->width() + 1) << text;
    const QRectF shown = item->mapRectToScene(item->boundingRect());
    EXPECT_TRUE(shown.left() > -1 && shown.right() < item->window()->width() + 1) << text;
  }
  for (QQuickItem* child : item->childItems()) {
    if (child->isVisible()) {
      expectNoneCut(child);
    }
  }
}

TEST_F(ThemeTest, LargeTextIsWrappedOrShortenedNeverCut) {
  const auto stack =
      std::make_shared<NavigationController>(std::make_shared<ViewController>(QString()));
  Application app(stack);
  app.window()->resize(320, 568);
  const auto show = [&](const std::shared_ptr<ViewController>& screen, const char* item) {
    SCOPED_TRACE(item);
    stack->pushViewController(screen);
    ASSERT_TRUE(app.waitForItem(item) && waitFor([&] { return app.window()->width() == 320; }));
    for (const double scale : {1.0, 1.25, 1.5}) {
      device_.setTextScale(scale);
      ASSERT_TRUE(test::deliver());
      expectNoneCut(app.window()->contentItem());
    }
    stack->popViewController();
  };
  const auto login = std::make_shared<LoginViewController>([] {});
  show(login, "loginView");
  login->toggleInfoView();
  show(login, "infoPanel");
  login->returnView();
  login->site()->open();
  show(login, "sitePanel");
  show(std::make_shared<RecentDisplaySettingsViewController>(), "displaySettings");
  show(std::make_shared<FavoriteDisplaySettingsViewController>(), "displaySettings");
  show(std::make_shared<ServerSettingsViewController>(), "serverSettings");
  show(std::make_shared<FavoriteListViewController>(TableViewStyle::Plain), "noticeButton");
  Alerts::showMessage("Login failed.", "Verify your data network.", "A button of too many words");
  ASSERT_TRUE(app.waitForItem("alertButton0"));
  expectNoneCut(app.window()->contentItem());
  app.alert().dismissWithButtonIndex(0);
}

TEST_F(ThemeTest, NothingMovesForAPersonWhoAsksForThat) {
  Application app(nullptr);
  LoginViewController& login = *app.root().loginViewController();
  const auto angle = [&] { return app.item("flip")->property("angle").toDouble(); };
  LoadingIndicator::sharedInstance().showLoadingIndicators();
  ASSERT_TRUE(app.waitForItem("loadingOverlay"));
  EXPECT_FALSE(app.item("steadyDots")->isVisible());
  device_.setReducedMotion(true);
  EXPECT_TRUE(app.item("steadyDots")->isVisible());
  login.toggleInfoView();
  EXPECT_EQ(angle(), 180);
  device_.setReducedMotion(false);
  login.returnView();
  EXPECT_EQ(angle(), 180) << "it takes its second again";
  EXPECT_TRUE(waitFor([&] { return angle() == 0; }));
  LoadingIndicator::sharedInstance().hideLoadingIndicators();
}

}  // namespace
}  // namespace veltramoor
