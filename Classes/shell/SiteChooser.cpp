#include "shell/SiteChooser.h"

#include <QPointer>
#include <filesystem>
#include <optional>

#include "platform/Alerts.h"
#include "platform/SiteConfiguration.h"
#include "toolkit/SharedInstances.h"

namespace veltramoor {
namespace {

// What the demo site took the place of: its notice and its forum are for nobody else.
struct Replaced {
  QString demoHost;
  SiteConfiguration configuration;
};

std::optional<Replaced>& replaced() { return SharedInstances::of<std::optional<Replaced>>(); }

bool isDemo() {
  return replaced() && replaced()->demoHost.toStdString() == SiteConfiguration::current().siteHost;
}

SiteConfiguration withoutDemo() {
  return isDemo() ? replaced()->configuration : SiteConfiguration::current();
}

}  // namespace

SiteChooser::SiteChooser() : shown_(siteHost().isEmpty()) {
  connect(&field_, &TextField::shouldReturn, this, &SiteChooser::use);
}

QString SiteChooser::siteHost() const {
  return QString::fromStdString(SiteConfiguration::current().siteHost);
}

QString SiteChooser::siteLabel() const {
  return isDemo() ? tr("Demo site (name demo, password demo)") : siteHost();
}

void SiteChooser::open() {
  // Never the demo site's own address, which is good for this run alone.
  field_.setText(QString::fromStdString(withoutDemo().siteHost));
  problem_.clear();
  shown_ = true;
  emit opened();
  emit changed();
  field_.becomeFirstResponder();
}

void SiteChooser::close() {
  starting_ = false;
  field_.resignFirstResponder();
  shown_ = !canClose();
  emit changed();
}

void SiteChooser::take(SiteConfiguration configuration, bool forGood) {
  const std::string before = SiteConfiguration::current().siteHost;
  const bool another = !before.empty() && before != configuration.siteHost;
  SiteConfiguration::setCurrent(std::move(configuration));
  problem_.clear();
  field_.resignFirstResponder();
  shown_ = false;
  emit changed();
  if (another) {
    emit siteChanged(forGood);
  }
}

void SiteChooser::refuse(const QString& problem) {
  problem_ = problem;
  emit changed();
}

void SiteChooser::use() {
  QString text = field_.text().trimmed();
  const qsizetype scheme = text.indexOf(QLatin1String("://"));
  text = scheme < 0 ? text : text.mid(scheme + 3);
  while (text.endsWith(QLatin1Char('/'))) {
    text.chop(1);
  }
  const std::string host = SiteConfiguration::normalizedHost(text.toStdString());
  if (host.empty() || !SiteConfiguration::isHost(host)) {
    refuse(tr("That is not the name of a site. Enter one like www.example.org."));
    return;
  }
  // A demo site that is still starting comes too late.
  starting_ = false;
  if (isDemo() && host == SiteConfiguration::current().siteHost) {
    close();
    return;
  }
  SiteConfiguration configuration = withoutDemo();
  configuration.siteHost = host;
  const std::filesystem::path file = SiteConfiguration::defaultFile();
  if (!SiteConfiguration::saveSiteHost(file, host)) {
    Alerts::showMessage(
        tr("Site").toStdString(),
        tr("%1 is used now, but could not be stored in %2.")
            .arg(QString::fromStdString(host), QString::fromStdString(file.string()))
            .toStdString());
  }
  take(std::move(configuration), true);
}

void SiteChooser::useDemo() {
  starting_ = true;
  emit changed();
  DemoSiteProcess::sharedInstance().start(
      [self = QPointer<SiteChooser>(this)](const QString& host) {
        if (self == nullptr || !self->starting_) {
          return;
        }
        self->starting_ = false;
        if (host.isEmpty()) {
          self->refuse(tr("The demo site could not be started."));
          return;
        }
        SiteConfiguration configuration = withoutDemo();
        replaced() = Replaced{host, configuration};
        configuration.siteHost = host.toStdString();
        configuration.noticeHost = configuration.siteHost;
        configuration.forumHost = configuration.siteHost + "/forum";
        self->take(std::move(configuration), false);
      });
}

}  // namespace veltramoor
