// Cookies told to an engine that answers late, or not at all.
#include "web/CookieMirror.h"

#include <QDateTime>
#include <QNetworkCookie>
#include <QTimer>
#include <QUrl>
#include <QtTest/QTest>
#include <set>

#include "support/ScreenTest.h"

namespace veltramoor {
namespace {

using test::waitFor;

/// Does what it is told in the order in which it was told, each a while later.
class SlowEngine : public QObject {
 public:
  SlowEngine() {
    QObject::connect(&mirror, &CookieMirror::added, this, [this](const QVariantMap& cookie) {
      told += "+" + cookie["name"].toString().toStdString();
    });
    QObject::connect(&mirror, &CookieMirror::removed, this, [this](const QVariantMap& cookie) {
      told += "-" + cookie["name"].toString().toStdString();
    });
    QObject::connect(&mirror, &CookieMirror::pushed, this, [this] { ++pushes; });
  }
  void push(const std::vector<const char*>& wanted) {
    QVariantList cookies;
    for (const char* name : wanted) {
      cookies.append(
          QVariantMap{{"name", name}, {"value", "v"}, {"domain", "index.test"}, {"path", "/"}});
    }
    mirror.push(cookies);
  }
  /// A page's own doing.
  void set(QNetworkCookie cookie) {
    cookie.setDomain("index.test");
    const std::string name = cookie.name().toStdString();
    const bool expired = cookie.expirationDate().isValid() &&
                         cookie.expirationDate() < QDateTime::currentDateTimeUtc();
    if (expired ? names.erase(name) > 0 : !refuses && names.insert(name).second) {
      expired ? mirror.cookieRemoved(cookie) : mirror.cookieAdded(cookie);
    }
  }

  std::chrono::milliseconds delay{0};
  bool refuses = false;
  /// What it holds, and what the store was told that pages did.
  std::set<std::string> names;
  std::string told;
  int pushes = 0;
  CookieMirror mirror{[this](const QNetworkCookie& cookie, const QUrl&) {
    QTimer::singleShot(delay, this, [this, cookie] { set(cookie); });
  }};
};

class CookieMirrorTest : public test::ScreenTest {
 protected:
  /// A session's cookie is pushed, and `logout` later there is none.
  void endSession(SlowEngine& engine, std::chrono::milliseconds logout) {
    engine.push({"uid"});
    QTest::qWait(static_cast<int>(logout.count()));
    engine.push({});
    QTest::qWait(static_cast<int>(2 * engine.delay.count()) + 50);
    EXPECT_GT(engine.pushes, 0);
    EXPECT_EQ(engine.names, std::set<std::string>{});
    EXPECT_EQ(engine.told, "") << "no page did any of it";
  }
};

TEST_F(CookieMirrorTest, ASessionThatEndedNeverComesBackHoweverSlowTheEngine) {
  for (const auto& [delay, logout] :
       {std::pair(0, 50), {0, 0}, {300, 0}, {300, 100}, {1400, 300}, {1400, 1200}}) {
    SCOPED_TRACE(delay * 10000 + logout);
    SlowEngine engine;
    engine.delay = std::chrono::milliseconds(delay);
    endSession(engine, std::chrono::milliseconds(logout));
    // What a page sets from then on is its own again.
    engine.set(QNetworkCookie("uid", "another"));
    EXPECT_EQ(engine.told, "+uid");
  }
}

TEST_F(CookieMirrorTest, AConfirmationThatComesLateIsNoPagesDoing) {
  SlowEngine engine;
  engine.delay = std::chrono::milliseconds(1300);
  engine.push({"uid"});
  ASSERT_TRUE(waitFor([&] { return engine.pushes == 1; })) << "nobody waits for ever";
  ASSERT_TRUE(waitFor([&] { return engine.names.size() == 1; }));
  engine.push({"uid"});
  EXPECT_EQ(engine.pushes, 2) << "it is there";
  EXPECT_EQ(engine.told, "");
  engine.set(QNetworkCookie("page", "own"));
  EXPECT_EQ(engine.told, "+page");
}

TEST_F(CookieMirrorTest, ARefusedCookieIsWaitedForOnce) {
  SlowEngine engine;
  engine.refuses = true;
  engine.push({"uid"});
  EXPECT_EQ(engine.pushes, 0);
  ASSERT_TRUE(waitFor([&] { return engine.pushes == 1; }));
  engine.push({"uid"});
  engine.push({});
  EXPECT_EQ(engine.pushes, 3) << "no load waits for it again";
  engine.refuses = false;
  engine.set(QNetworkCookie("uid", "of a page"));
  EXPECT_EQ(engine.told, "+uid");
}

// Qt WebEngine 6.8 reports a cookie with other flags as a removal with an addition after it.
TEST_F(CookieMirrorTest, ARemovalOfWhatWasReplacedIsNotTheOneThatIsAwaited) {
  QList<QNetworkCookie> set;
  CookieMirror mirror([&set](const QNetworkCookie& cookie, const QUrl&) { set.append(cookie); });
  std::string told;
  int pushes = 0;
  QObject::connect(&mirror, &CookieMirror::added, [&told] { told += "+"; });
  QObject::connect(&mirror, &CookieMirror::removed, [&told] { told += "-"; });
  QObject::connect(&mirror, &CookieMirror::pushed, [&pushes] { ++pushes; });
  const auto push = [&mirror](bool httpOnly) {
    mirror.push({QVariantMap{{"name", "a"},
                             {"value", "v"},
                             {"domain", "index.test"},
                             {"path", "/"},
                             {"httpOnly", httpOnly}}});
  };
  const auto reported = [&set](int index) {
    QNetworkCookie cookie = set.at(index);
    cookie.setDomain(QStringLiteral("index.test"));
    return cookie;
  };
  push(false);
  mirror.cookieAdded(reported(0));
  EXPECT_EQ(pushes, 1);
  push(true);
  mirror.push({});
  ASSERT_EQ(set.size(), 3);
  mirror.cookieRemoved(reported(0));
  EXPECT_EQ(pushes, 1) << "the one that goes is not even there";
  mirror.cookieAdded(reported(1));
  mirror.cookieRemoved(reported(1));
  EXPECT_EQ(pushes, 2);
  QTest::qWait(0);
  EXPECT_EQ(told, "");
}

}  // namespace
}  // namespace veltramoor
