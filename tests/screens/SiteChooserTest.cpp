// Which site the application is a client of: asked for, stored, replaced for a run.
#include "shell/SiteChooser.h"

#include <filesystem>

#include "ScreenTest.h"
#include "shell/LoginViewController.h"

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
  site.field()->setText("other.test");
  site.use();
  EXPECT_TRUE(site.isDemoOffered());
  int started = 0;
  DemoSiteProcess::sharedInstance().start([&started](const QString& host) {
    EXPECT_TRUE(host.startsWith("127.0.0.1:"));
    ++started;
  });
  ASSERT_TRUE(waitFor([&] { return started > 0; }));
  EXPECT_EQ(started, 1);
  EXPECT_EQ(SiteConfiguration::current().siteHost, "other.test");
}

}  // namespace
}  // namespace veltramoor
