// Which site the application is a client of: asked for, stored, replaced for a run.
#include "shell/SiteChooser.h"

#include <filesystem>

#include "shell/LoginViewController.h"
#include "support/ScreenTest.h"

namespace veltramoor {
namespace {

using test::waitFor;

class SiteChooserTest : public test::ScreenTest {
 protected:
  SiteChooserTest() { SiteConfiguration::setCurrent({}); }
  ~SiteChooserTest() override {
    DemoSiteProcess::sharedInstance().stop();
    std::filesystem::remove_all(SiteConfiguration::defaultFile());
  }
  static std::string storedHost() {
    return SiteConfiguration::load(SiteConfiguration::defaultFile(), nullptr).siteHost;
  }

  VeltramoorAppDelegate delegate_;
};

TEST_F(SiteChooserTest, WithoutASiteItAsksForOneAndStoresIt) {
  store_.setString("Veltramoor_automaticLogin", "YES");
  const auto login = std::make_shared<LoginViewController>([] {});
  login->appear();
  SiteChooser& site = *login->site();
  EXPECT_TRUE(site.isShown());
  login->tryAutoLogin();
  EXPECT_FALSE(login->hasBackgroundWork()) << "there is nothing to log in to";
  for (const char* wrong : {"", "   ", "two words", "a/b", "user:secret@host"}) {
    site.field()->setText(wrong);
    site.use();
    EXPECT_TRUE(site.isShown()) << wrong;
    EXPECT_FALSE(site.problem().isEmpty()) << wrong;
    EXPECT_FALSE(site.problem().contains("secret"));
  }
  site.field()->setText(" http://index.test:8080/ ");
  site.field()->returnPressed();
  EXPECT_FALSE(site.isShown());
  EXPECT_EQ(site.problem(), QString());
  EXPECT_EQ(SiteConfiguration::current().siteHost, "index.test:8080");
  EXPECT_EQ(storedHost(), "index.test:8080");
  for (const char* written : {"http://host///", "host/", "https://host", "HOST:80"}) {
    site.open();
    EXPECT_TRUE(site.isShown());
    site.field()->setText(written);
    site.use();
    EXPECT_EQ(site.problem(), QString()) << written;
    EXPECT_EQ(storedHost(), "host") << written;
  }
  site.open();
  EXPECT_TRUE(site.isShown());
  site.close();
  EXPECT_FALSE(site.isShown());
}

TEST_F(SiteChooserTest, WhatCannotBeStoredIsUsedAndSaid) {
  std::filesystem::create_directories(SiteConfiguration::defaultFile() / "in the way");
  SiteChooser site;
  site.field()->setText("index.test");
  site.use();
  EXPECT_FALSE(site.isShown());
  EXPECT_EQ(SiteConfiguration::current().siteHost, "index.test");
  EXPECT_TRUE(delegate_.alertView()->message().startsWith(
      QStringLiteral("index.test is used now, but could not be stored in ")));
}

TEST_F(SiteChooserTest, TheDemoSiteIsForThisRunAloneAndLeavesNothingToTheNext) {
  SiteConfiguration before;
  before.siteHost = "index.test";
  before.noticeHost = "notice.test";
  before.forumHost = "forum.test";
  SiteConfiguration::setCurrent(before);
  SiteChooser site;
  for (int i = 0; i < 2; ++i) {
    site.useDemo();
    ASSERT_TRUE(waitFor([&] { return site.siteHost().startsWith("127.0.0.1:"); }));
    EXPECT_EQ(SiteConfiguration::current().noticeHost, SiteConfiguration::current().siteHost);
    EXPECT_TRUE(site.siteLabel().contains("password demo")) << "an account to try";
    EXPECT_EQ(storedHost(), "");
  }
  site.open();
  EXPECT_EQ(site.field()->text(), QStringLiteral("index.test")) << "not an address of this run";
  site.field()->setText(site.siteHost());
  site.use();
  EXPECT_FALSE(site.isShown());
  EXPECT_EQ(storedHost(), "") << "the demo site is not stored by its address either";
  EXPECT_EQ(SiteConfiguration::current().noticeHost, SiteConfiguration::current().siteHost);
  site.field()->setText("other.test");
  site.use();
  EXPECT_EQ(SiteConfiguration::current().siteHost, "other.test");
  EXPECT_EQ(site.siteLabel(), QStringLiteral("other.test"));
  EXPECT_EQ(SiteConfiguration::current().noticeHost, "notice.test");
  EXPECT_EQ(SiteConfiguration::current().forumHost, "forum.test");
}

TEST_F(SiteChooserTest, AChoiceMadeWhileTheDemoSiteStartsIsTheLaterOne) {
  SiteChooser site;
  site.useDemo();
  EXPECT_FALSE(site.isDemoOffered());
  QString demo;
  DemoSiteProcess::sharedInstance().start([&demo](const QString& host) { demo = host; });
  site.field()->setText("other.test");
  site.use();
  EXPECT_TRUE(site.isDemoOffered());
  ASSERT_TRUE(waitFor([&] { return !demo.isEmpty(); })) << "it listens, and all have been told";
  EXPECT_TRUE(demo.startsWith("127.0.0.1:"));
  EXPECT_EQ(SiteConfiguration::current().siteHost, "other.test");
}

// An account goes to no other site than it was typed for, unless somebody sends it there.
TEST_F(SiteChooserTest, AnotherSiteIsNotOfferedTheStoredAccount) {
  SiteConfiguration before;
  before.siteHost = "index.test";
  SiteConfiguration::setCurrent(before);
  for (const auto& [key, value] : {std::pair("username", "anna"),
                                   {"password", "annas-secret"},
                                   {"anonymousLogin", "NO"},
                                   {"automaticLogin", "YES"}}) {
    store_.setString(std::string("Veltramoor_") + key, value);
  }
  const auto login = std::make_shared<LoginViewController>([] {});
  login->appear();
  const auto texts = [&] { return login->username()->text() + login->password()->text(); };
  SiteChooser& site = *login->site();
  site.open();
  site.use();
  EXPECT_EQ(texts(), QStringLiteral("annaannas-secret")) << "the same site";
  site.useDemo();
  ASSERT_TRUE(waitFor([&] { return site.siteHost().startsWith("127.0.0.1:"); }));
  EXPECT_EQ(texts(), QString());
  EXPECT_EQ(store_.string("Veltramoor_automaticLogin"), "YES") << "for this run alone";
  login->username()->becomeFirstResponder();
  site.open();
  EXPECT_FALSE(login->username()->isEditing());
  EXPECT_TRUE(site.field()->isEditing());
  site.field()->setText("other.test");
  site.use();
  EXPECT_EQ(store_.string("Veltramoor_automaticLogin"), "NO") << "nor at the next start";
  EXPECT_EQ(store_.string("Veltramoor_username"), "anna") << "and nothing is lost";
  EXPECT_EQ(store_.string("Veltramoor_password"), "annas-secret");
}

}  // namespace
}  // namespace veltramoor
