// The desktop's wishes over a real bus of the test's own, with a portal that the test is.
#include "toolkit/DesktopWishes.h"

#include <gtest/gtest.h>

#include <QDBusContext>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QMap>
#include <QProcess>
#include <fstream>

#include "support/ScreenTest.h"
#include "support/TemporaryFolder.h"
#include "toolkit/Device.h"

namespace veltramoor {
namespace {

using test::waitFor;

/// What a desktop's portal answers; one that is silent leaves every question open.
class Portal : public QObject, protected QDBusContext {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

 public:
  QMap<QString, QVariant> values;
  bool silent = false;
  int questions = 0;

  void change(const QString& key, const QVariant& value) {
    values[key] = value;
    const qsizetype dot = key.lastIndexOf('.');
    emit SettingChanged(key.left(dot), key.mid(dot + 1), QDBusVariant(value));
  }

 public slots:
  Q_SCRIPTABLE QDBusVariant Read(const QString& space, const QString& key) {
    ++questions;
    const QVariant value = values.value(space + '.' + key, 0);
    setDelayedReply(silent);
    if (!values.contains(space + '.' + key) && !silent) {
      sendErrorReply("org.freedesktop.portal.Error.NotFound", "Requested setting not found");
    }
    return QDBusVariant(QVariant::fromValue(QDBusVariant(value)));
  }

 signals:
  Q_SCRIPTABLE void SettingChanged(const QString& space, const QString& key,
                                   const QDBusVariant& value);
};

constexpr const char* kAnimations = "org.gnome.desktop.interface.enable-animations";
constexpr const char* kTextScale = "org.gnome.desktop.interface.text-scaling-factor";
constexpr const char* kContrast = "org.freedesktop.appearance.contrast";

class DesktopWishesTest : public testing::Test {
 protected:
  DesktopWishesTest() {
    const std::string configuration = (folder_ / "bus.conf").string();
    std::ofstream(configuration)
        << "<busconfig><type>session</type><listen>unix:tmpdir=" << folder_.path().string()
        << R"(</listen><policy context="default"><allow send_destination="*" eavesdrop="true"/>)"
        << R"(<allow eavesdrop="true"/><allow own="*"/></policy></busconfig>)";
    daemon_.start("dbus-daemon", {"--nofork", "--print-address=1",
                                  QString::fromStdString("--config-file=" + configuration)});
    EXPECT_TRUE(daemon_.waitForReadyRead());
    address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
  }
  ~DesktopWishesTest() override {
    QDBusConnection::disconnectFromBus("portal");
    QDBusConnection::disconnectFromBus("application");
    daemon_.kill();
    daemon_.waitForFinished();
    device_.setReducedMotion(false);
    device_.setTextScale(1);
    device_.setHighContrast(false);
  }

  void startPortal() {
    QDBusConnection bus = QDBusConnection::connectToBus(address_, "portal");
    EXPECT_TRUE(bus.registerObject("/org/freedesktop/portal/desktop", &portal_,
                                   QDBusConnection::ExportScriptableContents));
    EXPECT_TRUE(bus.registerService("org.freedesktop.portal.Desktop"));
  }
  [[nodiscard]] QDBusConnection bus() const {
    return QDBusConnection::connectToBus(address_, "application");
  }

  const test::TemporaryFolder folder_;
  QProcess daemon_;
  QString address_;
  Portal portal_;
  Device& device_ = Device::sharedInstance();
};

TEST_F(DesktopWishesTest, AreTakenAtTheStartAndWheneverTheyChange) {
  portal_.values = {{kAnimations, false}, {kTextScale, 1.25}, {kContrast, 1U}};
  startPortal();
  const DesktopWishes wishes(bus());
  EXPECT_FALSE(device_.reducedMotion()) << "nobody has waited for the answer";
  const auto are = [&](bool reducedMotion, double textScale, bool highContrast) {
    return waitFor([=, this] {
      return device_.reducedMotion() == reducedMotion && device_.textScale() == textScale &&
             device_.highContrast() == highContrast;
    });
  };
  ASSERT_TRUE(are(true, 1.25, true));
  portal_.change(kAnimations, true);
  portal_.change(kContrast, 0U);
  portal_.change(kTextScale, 3.0);
  ASSERT_TRUE(are(false, 1.5, false)) << "3 is more than the screens have room for";
  portal_.change(kTextScale, 0.5);
  ASSERT_TRUE(are(false, 1, false));
  const int questions = portal_.questions;
  portal_.change("org.freedesktop.appearance.color-scheme", 1U);
  portal_.change(kTextScale, "of another type");
  portal_.change(kContrast, 1U);
  ASSERT_TRUE(are(false, 1, true));
  EXPECT_EQ(portal_.questions, questions + 2) << "the first is none of the application's";
}

// No bus, no portal on it, one that knows nothing, and one that never says a word.
TEST_F(DesktopWishesTest, NobodyWaitsForThem) {
  QElapsedTimer elapsed;
  elapsed.start();
  { const DesktopWishes wishes(QDBusConnection("there is none")); }
  { const DesktopWishes wishes(bus()); }
  startPortal();
  for (const bool silent : {false, true}) {
    portal_.silent = silent;
    portal_.questions = 0;
    const DesktopWishes wishes(bus());
    ASSERT_TRUE(waitFor([&] { return portal_.questions == 3; }));
  }
  EXPECT_LT(elapsed.elapsed(), 15'000) << "the bus itself gives up after 25 seconds";
  EXPECT_FALSE(device_.reducedMotion() || device_.highContrast() || device_.textScale() != 1);
}

}  // namespace
}  // namespace veltramoor

#include "DesktopWishesTest.moc"
