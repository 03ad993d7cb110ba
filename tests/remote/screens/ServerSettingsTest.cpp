// The remote settings screen: what it stores and when, by itself and in the real window.
#include <QAbstractItemModelTester>
#include <QAccessible>

#include "remote/BitClient.h"
#include "remote/ServerInfo.h"
#include "remote/screens/ServerSettingsViewController.h"
#include "support/Application.h"
#include "support/FileStore.h"
#include "support/RawServer.h"
#include "support/ScreenTest.h"
#include "support/TransmissionDaemon.h"

namespace veltramoor {
namespace {

using test::Application;
using test::waitFor;

class ServerSettingsTest : public test::ScreenTest {
 public:
  void store(const char* key, const char* value) {
    store_.setString(std::string("Veltramoor_server") + key, value);
  }
  [[nodiscard]] std::string stored(const char* key) const {
    return store_.string(std::string("Veltramoor_server") + key).value_or("(none)");
  }
};

TEST_F(ServerSettingsTest, OpensOnWhatIsStoredAndKeepsATypedPort) {
  struct Case {
    const char* client;
    const char* port;
    int segment;
    const char* name;
    const char* shownPort;
  };
  for (const Case& one :
       {Case{"", "", 0, "Vuze", "9091"}, Case{"Vuze", "", 0, "Vuze", "9091"},
        Case{"Transmission", "9092", 1, "Transmission", "9092"},
        Case{"Utorrent", "", 2, "Utorrent", "8080"},
        Case{"Utorrent", "port 7", 2, "Utorrent", "port 7"}, Case{"Nobody", "7", 0, "Vuze", "7"}}) {
    SCOPED_TRACE(one.client);
    store("Client", one.client);
    store("Port", one.port);
    ServerSettingsViewController screen;
    EXPECT_EQ(stored("Client"), one.client) << "nothing is stored before the screen is shown";
    screen.appear();
    EXPECT_EQ(screen.serverClient()->selectedSegment(), one.segment);
    EXPECT_EQ(screen.serverDescription().toStdString(),
              BitClient::classNamed(one.name)->defaultDescription);
    EXPECT_EQ(screen.serverPort()->text(), QLatin1String(one.shownPort));
    EXPECT_EQ(stored("Client"), one.name);
    EXPECT_EQ(stored("Port"), one.shownPort);
    EXPECT_EQ(stored("Address"), "(none)");
    EXPECT_EQ(stored("Password"), "(none)");
  }
}

TEST_F(ServerSettingsTest, ChoosingAClientResetsThePort) {
  store("Client", "Transmission");
  store("Port", "1234");
  ServerSettingsViewController screen;
  screen.appear();
  screen.serverClient()->choose(2);
  EXPECT_EQ(stored("Client"), "Utorrent");
  EXPECT_EQ(stored("Port"), "8080");
  EXPECT_EQ(screen.serverPort()->text(), QStringLiteral("8080"));
  EXPECT_TRUE(screen.serverDescription().contains(QStringLiteral("Web UI")));
  screen.viewWillDisappear();
  screen.appear();
  EXPECT_EQ(screen.serverClient()->selectedSegment(), 2) << "it loads once";
}

// The segment tells of itself even when it is tapped again.
TEST_F(ServerSettingsTest, TheChosenClientKeepsItsTypedPort) {
  store("Client", "Transmission");
  store("Port", "1234");
  ServerSettingsViewController screen;
  screen.appear();
  screen.serverClient()->choose(1);
  EXPECT_EQ(screen.serverPort()->text(), QStringLiteral("1234"));
  EXPECT_EQ(stored("Port"), "1234");
}

TEST_F(ServerSettingsTest, FindsOutWhatFailsStepByStep) {
  const VeltramoorAppDelegate delegate;
  const std::string closed = std::to_string(test::freePort());
  store("Client", "Transmission");
  store("Address", "127.0.0.1");
  store("Port", closed.c_str());
  const auto screen = std::make_shared<ServerSettingsViewController>();
  DiagnosisModel& found = *screen->diagnosis();
  const QAbstractItemModelTester tester(&found);
  screen->appear();
  screen->diagnose();
  EXPECT_TRUE(found.isRunning());
  EXPECT_FALSE(screen->diagnoseButton()->isEnabled());
  ASSERT_TRUE(waitFor([&] { return !found.isRunning(); }));
  EXPECT_EQ(found.steps().back().step, RemoteStep::Port);
  EXPECT_FALSE(found.lastIsOk());
  EXPECT_TRUE(found.verdict().contains(QString::fromStdString(closed)));
  EXPECT_TRUE(screen->diagnoseButton()->isEnabled());

  // What was found is of settings that are being changed.
  screen->serverPort()->becomeFirstResponder();
  screen->serverPort()->setText(QStringLiteral("1"));
  EXPECT_EQ(found.count(), 0);

  const test::TransmissionDaemon daemon;
  screen->serverPort()->setText(QString::fromStdString(daemon.port()));
  screen->diagnose();
  EXPECT_EQ(stored("Port"), daemon.port()) << "what is still being edited counts";
  ASSERT_TRUE(waitFor([&] { return !found.isRunning(); }));
  EXPECT_TRUE(found.lastIsOk()) << found.verdict().toStdString();
  EXPECT_EQ(found.count(), 7);
}

// A run that was overtaken ends at once and says nothing any more.
TEST_F(ServerSettingsTest, ADiagnosisThatHangsMakesWay) {
  const VeltramoorAppDelegate delegate;
  const test::RawServer hangs([](const test::RecordedRequest&) { return test::RawReply::hang(); });
  store("Client", "Transmission");
  store("Address", "127.0.0.1");
  store("Port", std::to_string(hangs.port()).c_str());
  auto screen = std::make_shared<ServerSettingsViewController>();
  screen->appear();
  screen->diagnose();
  ASSERT_TRUE(hangs.waitForHits(1));
  const test::TransmissionDaemon daemon;
  store("Port", daemon.port().c_str());
  screen->diagnose();
  ASSERT_TRUE(waitFor([&] { return !screen->diagnosis()->isRunning(); }));
  EXPECT_TRUE(screen->diagnosis()->lastIsOk());
  EXPECT_EQ(screen->diagnosis()->count(), 7);
}

TEST_F(ServerSettingsTest, WhatTheStoreRefusesGivesWayToWhatIsStored) {
  test::FileStore file;
  ServerSettingsViewController screen;
  screen.appear();
  const auto type = [](TextField* field, const char* text) {
    field->becomeFirstResponder();
    field->setText(QLatin1String(text));
    field->resignFirstResponder();
  };
  screen.serverClient()->choose(1);
  type(screen.serverAddress(), "nas");
  type(screen.serverPassword(), "secret");
  {
    const test::FullDisk fullDisk;
    screen.serverClient()->choose(2);
    type(screen.serverAddress(), "other");
    type(screen.serverPort(), "7");
    type(screen.serverUser(), "me");
    type(screen.serverPassword(), "word");
  }
  EXPECT_EQ(screen.serverClient()->selectedSegment(), 1);
  EXPECT_EQ(screen.serverDescription().toStdString(),
            BitClient::classNamed("Transmission")->defaultDescription);
  EXPECT_EQ(screen.serverAddress()->text(), QStringLiteral("nas"));
  EXPECT_EQ(screen.serverPort()->text(), QStringLiteral("9091"));
  EXPECT_EQ(screen.serverUser()->text(), QString());
  EXPECT_EQ(screen.serverPassword()->text(), QStringLiteral("secret"));
}

// The keyboard comes for the field being edited; later ones do not scroll while it is there.
TEST_F(ServerSettingsTest, ScrollsOnceForAKeyboardAndGrowsWhenItGoes) {
  ServerSettingsViewController screen;
  screen.appear();
  screen.appear();
  std::vector<TextField*> scrolled;
  QObject::connect(&screen, &ServerSettingsViewController::scrollToFieldRequested,
                   [&](TextField* field) { scrolled.push_back(field); });
  EXPECT_EQ(screen.contentHeight(), 640);
  screen.serverUser()->becomeFirstResponder();
  Device::sharedInstance().setKeyboardShown(true);
  Device::sharedInstance().setKeyboardShown(true);
  EXPECT_EQ(scrolled, std::vector<TextField*>{screen.serverUser()});
  EXPECT_EQ(screen.contentHeight(), 640);
  Device::sharedInstance().setKeyboardShown(false);
  EXPECT_EQ(screen.contentHeight(), 700);
  screen.serverPassword()->focusChanged(true);
  Device::sharedInstance().setKeyboardShown(true);
  EXPECT_EQ(scrolled.back(), screen.serverPassword());
  Device::sharedInstance().setKeyboardShown(false);
  EXPECT_EQ(screen.contentHeight(), 700);
}

class ServerSettingsWindowTest : public ServerSettingsTest {
 protected:
  ServerSettingsWindowTest() {
    screen_->makeTestPage = [this](ServerSettingsViewController& opener) {
      EXPECT_EQ(&opener, screen_.get());
      const ServerInfo& info = ServerInfo::sharedInstance();
      tried_ += info.address().value_or("") + " " + info.password().value_or("") + "\n";
      return std::make_shared<ViewController>(QString());
    };
    stack_->pushViewController(screen_);
    EXPECT_TRUE(app_.waitForItem("serverSettings"));
  }
  void typeText(const char* text) const {
    for (const char* c = text; *c != 0; ++c) {
      QTest::keyClick(app_.window(), *c);
    }
  }

  std::shared_ptr<ServerSettingsViewController> screen_ =
      std::make_shared<ServerSettingsViewController>();
  std::string tried_;
  std::shared_ptr<NavigationController> stack_ =
      std::make_shared<NavigationController>(std::make_shared<ViewController>(QString()));
  Application app_{stack_};
};

TEST_F(ServerSettingsWindowTest, ReturnLeadsFromFieldToFieldAndStoresEach) {
  EXPECT_FALSE(app_.item("navigationBar")->isVisible());
  app_.click(app_.item("serverClient1"));
  EXPECT_EQ(stored("Client"), "Transmission");
  app_.click(app_.item("serverAddress"));
  typeText("10.0.0.9");
  EXPECT_EQ(stored("Address"), "(none)") << "not while it is typed";
  struct Case {
    const char* key;
    const char* value;
    const char* next;
  };
  for (const Case& one :
       {Case{"Address", "10.0.0.9", "serverPortFieldInput"},
        Case{"Port", "90917", "serverUserFieldInput"},
        Case{"User", "7", "serverPasswordFieldInput"}, Case{"Password", "7", "testButton"}}) {
    app_.type(Qt::Key_Return);
    EXPECT_EQ(stored(one.key), one.value);
    EXPECT_TRUE(waitFor([&] { return app_.focused() == one.next; })) << "after " << one.key;
    typeText("7");
  }
  EXPECT_EQ(screen_->serverPassword()->text(), QStringLiteral("7")) << "the keyboard is gone";
  app_.type(Qt::Key_Escape);
  EXPECT_TRUE(waitFor([&] { return app_.item("serverSettings") == nullptr; }));
}

// Whoever taps or tabs somewhere is there, and what was typed is stored all the same.
TEST_F(ServerSettingsWindowTest, TheFocusStaysWhereThePersonPutIt) {
  app_.click(app_.item("serverAddress"));
  typeText("a");
  app_.click(app_.item("serverPassword"));
  EXPECT_EQ(stored("Address"), "a");
  EXPECT_EQ(app_.focused(), "serverPasswordFieldInput");
  typeText("p");
  QTest::keyClick(app_.window(), Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(stored("Password"), "p");
  EXPECT_EQ(app_.focused(), "serverUserFieldInput");
  typeText("u");
  app_.click(app_.item("serverClient2"));
  EXPECT_EQ(stored("User"), "u");
  EXPECT_EQ(app_.focused(), "serverClient");
  QQuickItem* description = app_.item("serverDescription");
  ASSERT_TRUE(waitFor([&] { return description->property("scrolls").toBool(); }));
  std::string walk;
  for (int i = 0; i < 6; ++i) {
    app_.type(Qt::Key_Tab);
    walk += app_.focused() + " ";
  }
  EXPECT_EQ(walk,
            "serverDescription serverAddressFieldInput serverPortFieldInput serverUserFieldInput "
            "serverPasswordFieldInput testButton ");
  app_.click(app_.item("serverPort"));
  app_.type(Qt::Key_End);
  typeText("1");
  const auto writes = store_.writeCount();
  app_.type(Qt::Key_Escape);
  EXPECT_EQ(stored("Port"), "80801") << "leaving ends the editing";
  EXPECT_EQ(store_.writeCount(), writes + 1) << "and stores nothing else";
  EXPECT_FALSE(screen_->serverUser()->isEditing());
}

TEST_F(ServerSettingsWindowTest, TheTestUsesWhatIsStillBeingTyped) {
  app_.click(app_.item("serverPassword"));
  typeText("secret");
  app_.click(app_.item("testButton"));
  EXPECT_EQ(tried_, " secret\n");
  EXPECT_EQ(stack_->depth(), 3);
  EXPECT_TRUE(app_.item("navigationBar")->isVisible());
  EXPECT_FALSE(screen_->serverPassword()->isEditing());
  stack_->popViewController();
  EXPECT_FALSE(app_.item("navigationBar")->isVisible());
  app_.click(app_.item("serverAddress"));
  typeText("host");
  app_.click(app_.item("testButton"));
  EXPECT_EQ(tried_, " secret\nhost secret\n");
  stack_->popViewController();
  screen_->makeTestPage = nullptr;
  screen_->viewWillAppear();
  EXPECT_FALSE(app_.item("testButton")->isEnabled());
  screen_->test();
  EXPECT_EQ(stack_->depth(), 2);
}

// The password is shown to nobody, assistive technology included.
TEST_F(ServerSettingsWindowTest, ThePasswordIsReadOutNowhere) {
  app_.click(app_.item("serverPassword"));
  typeText("secret");
  QStringList texts;
  const auto collect = [&](const auto& self, QAccessibleInterface* one) -> void {
    for (const auto kind : {QAccessible::Name, QAccessible::Description, QAccessible::Value}) {
      texts.append(one->text(kind));
    }
    if (one->textInterface() != nullptr) {
      texts.append(one->textInterface()->text(0, one->textInterface()->characterCount()));
    }
    for (int i = 0; i < one->childCount(); ++i) {
      self(self, one->child(i));
    }
  };
  collect(collect, QAccessible::queryAccessibleInterface(app_.window()));
  EXPECT_TRUE(texts.contains(QStringLiteral("Password")));
  EXPECT_TRUE(texts.contains(QStringLiteral("9091"))) << "other fields are read";
  EXPECT_TRUE(texts.filter(QStringLiteral("secret")).isEmpty());
}

TEST_F(ServerSettingsWindowTest, EverythingCanBeReachedOnTheSmallestWindow) {
  app_.window()->resize(320, 480);
  QQuickItem* scroll = app_.item("serverSettingsScroll");
  ASSERT_TRUE(waitFor([&] { return scroll->size() == QSizeF(320, 480); }));
  EXPECT_EQ(scroll->property("contentHeight").toDouble(), 640);
  QQuickItem* button = app_.item("testButton");
  EXPECT_GT(button->mapToScene({0, button->height()}).y(), 480);
  for (const char* name : {"serverAddress", "serverPort", "serverUser", "serverPassword",
                           "testButton", "serverClient"}) {
    QQuickItem* item = app_.item(name);
    item->forceActiveFocus();
    EXPECT_TRUE(waitFor([&] {
      return item->mapToScene({0, 0}).y() >= 0 && item->mapToScene({0, item->height()}).y() <= 480;
    })) << name;
    EXPECT_GE(item->mapToScene({0, 0}).x(), 20);
    EXPECT_LE(item->mapToScene({item->width(), 0}).x(), 300);
  }
  // The keyboard asks for 30 points beneath the field.
  QQuickItem* user = app_.item("serverUser");
  scroll->setProperty("contentY", 0);
  app_.click(user);
  Device::sharedInstance().setKeyboardShown(true);
  EXPECT_TRUE(waitFor([&] { return user->mapToScene({0, user->height() + 30}).y() <= 480; }));
  Device::sharedInstance().setKeyboardShown(false);
  EXPECT_EQ(scroll->property("contentHeight").toDouble(), 700);
}

}  // namespace
}  // namespace veltramoor
