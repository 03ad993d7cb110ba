// The screens' colours, and their texts at every size that the system may ask for.
#include <QColor>
#include <QQmlComponent>
#include <cmath>

#include "lists/EditFavoriteListViewController.h"
#include "lists/FavoriteComposeViewController.h"
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
    Device::sharedInstance().setTextScale(1);
    Device::sharedInstance().setHighContrast(false);
    Device::sharedInstance().setReducedMotion(false);
  }
};

// By the Web Content Accessibility Guidelines 2.1: 1 to 21.
double luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}
double contrast(const QColor& one, const QColor& other) {
  const double a = luminance(one) + 0.05;
  const double b = luminance(other) + 0.05;
  return std::max(a, b) / std::min(a, b);
}
QColor over(const QColor& top, const QColor& bottom, double opacity) {
  const auto mixed = [opacity](float a, float b) {
    return static_cast<float>(a * opacity + b * (1 - opacity));
  };
  return QColor::fromRgbF(mixed(top.redF(), bottom.redF()), mixed(top.greenF(), bottom.greenF()),
                          mixed(top.blueF(), bottom.blueF()));
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
    Device::sharedInstance().setHighContrast(high);
    for (const auto& [text, grounds] : written) {
      for (const char* ground : grounds) {
        EXPECT_GE(contrast(color(text), color(ground)), 4.5)
            << text << " on " << ground << (high ? ", high contrast" : "");
      }
    }
    // A lit plate, and the loading box, which lets a tenth of what is beneath it through.
    const QColor light = color("pressed");
    EXPECT_GE(contrast(color("textStrong"), over(light, color("raised"), light.alphaF())), 4.5);
    for (const QColor& beneath : {color("ground"), QColor(Qt::black), QColor(Qt::white)}) {
      EXPECT_GE(contrast(over(color("textStrong"), beneath, 0.9), over(color("box"), beneath, 0.9)),
                4.5);
    }
    EXPECT_GE(contrast(color("text"), color("ground")), high ? 15 : 7);
  }
}

// Texts that reach out of the window, or are cut by something that does not say so.
void expectNoneCut(Application& app, const std::string& screen) {
  const QRectF window(QPointF(), app.window()->size());
  const auto look = [&](const auto& self, QQuickItem* item) -> void {
    if (!item->isVisible()) {
      return;
    }
    if (item->inherits("QQuickText") && !item->property("text").toString().isEmpty()) {
      const QRectF text(0, 0, item->property("contentWidth").toDouble(),
                        item->property("contentHeight").toDouble());
      const QString what = item->property("text").toString().left(30);
      EXPECT_LE(text.width(), item->width() + 1) << screen << ": " << what.toStdString();
      const QRectF shown = item->mapRectToScene(item->boundingRect());
      EXPECT_TRUE(shown.left() >= -0.5 && shown.right() <= window.right() + 0.5)
          << screen << ": " << what.toStdString();
    }
    for (QQuickItem* child : item->childItems()) {
      self(self, child);
    }
  };
  look(look, app.window()->contentItem());
}

TEST_F(ThemeTest, LargeTextIsWrappedOrShortenedNeverCut) {
  const auto stack =
      std::make_shared<NavigationController>(std::make_shared<ViewController>(QString()));
  Application app(stack);
  app.window()->resize(320, 568);
  ASSERT_TRUE(waitFor([&] { return app.window()->width() == 320; }));
  const auto show = [&](const std::shared_ptr<ViewController>& screen, const char* item) {
    stack->pushViewController(screen);
    ASSERT_TRUE(app.waitForItem(item));
    for (const double scale : {1.0, 1.25, 1.5}) {
      Device::sharedInstance().setTextScale(scale);
      ASSERT_TRUE(test::deliver());
      expectNoneCut(app, item);
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
  Alert alert;
  alert.title = "Login failed.";
  alert.message = "Connection error. Verify your data network.";
  alert.buttons = {"Cancel", "A button with a rather long name"};
  Alerts::show(alert);
  ASSERT_TRUE(app.waitForItem("alertButton1"));
  expectNoneCut(app, "alert");
  app.alert().dismissWithButtonIndex(0);
}

}  // namespace
}  // namespace veltramoor
