// A demo site, an application and its main thread for tests of screens.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QThread>
#include <functional>
#include <memory>

#include "demo/DemoSite.h"
#include "platform/MainThread.h"
#include "platform/Preferences.h"
#include "platform/SiteConfiguration.h"
#include "platform/UrlLoading.h"
#include "remote/ServerInfo.h"
#include "shell/VeltramoorAppDelegate.h"
#include "support/RawServer.h"

namespace veltramoor::test {

/// Runs the event loop until `done` holds; false when ten seconds were not enough.
inline bool waitFor(const std::function<bool()>& done) {
  for (const QDeadlineTimer limit(10'000); !done();) {
    if (limit.hasExpired()) {
      return false;
    }
    QCoreApplication::processEvents();
    QThread::msleep(1);
  }
  return true;
}

/// Runs what was handed to the main thread until now; false when ten seconds were not enough.
inline bool deliver() {
  const auto last = std::make_shared<bool>(false);
  MainThread::perform([last] { *last = true; });
  return waitFor([&] { return *last; });
}

class ScreenTest : public testing::Test {
 protected:
  ScreenTest() {
    if (geteuid() == 0) {
      // The web engine's sandbox refuses to run as root.
      qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    }
    Preferences::setSharedInstance(&store_);
    SiteConfiguration configuration;
    configuration.siteHost = site_.host();
    SiteConfiguration::setCurrent(configuration);
    // An application that ran before in this process has stopped all transfers.
    UrlLoading::sharedInstance().resume();
  }
  ~ScreenTest() override { Preferences::setSharedInstance(nullptr); }

  /// Makes `client`, on this machine, the person's Transmission.
  static void sendTo(const RawServer& client) {
    ServerInfo& info = ServerInfo::sharedInstance();
    info.setClient("Transmission");
    info.setAddress("127.0.0.1");
    info.setPort(std::to_string(client.port()));
  }

  Preferences store_{std::nullopt};
  DemoSite site_;
};

}  // namespace veltramoor::test
