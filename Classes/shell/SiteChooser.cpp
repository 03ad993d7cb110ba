#include "shell/SiteChooser.h"

#include <QPointer>

#include "platform/SiteConfiguration.h"

namespace veltramoor {
SiteChooser::SiteChooser() : shown_(siteHost().isEmpty()) {
  connect(&field_, &TextField::shouldReturn, this, &SiteChooser::use);
}

QString SiteChooser::siteHost() const {
  return QString::fromStdString(SiteConfiguration::current().siteHost);
}

void SiteChooser::open() {
  field_.setText(siteHost());
  problem_.clear();
  shown_ = true;
  emit changed();
}

void SiteChooser::close() {
  shown_ = !canClose();
  emit changed();
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
  const std::string host = text.toStdString();
  if (host.empty() || !SiteConfiguration::isHost(host)) {
    refuse(tr("That is not the name of a site. Enter one like www.example.org."));
    return;
  }
  SiteConfiguration configuration = SiteConfiguration::current();
  configuration.siteHost = host;
  SiteConfiguration::setCurrent(std::move(configuration));
  problem_ = SiteConfiguration::saveSiteHost(SiteConfiguration::defaultFile(), host)
                 ? QString()
                 : tr("The site is used now, but could not be stored in %1.")
                       .arg(QString::fromStdString(SiteConfiguration::defaultFile().string()));
  field_.resignFirstResponder();
  shown_ = false;
  emit changed();
}

void SiteChooser::useDemo() {
  starting_ = true;
  emit changed();
  DemoSiteProcess::sharedInstance().start(
      [self = QPointer<SiteChooser>(this)](const QString& host) {
        if (self == nullptr) {
          return;
        }
        self->starting_ = false;
        if (host.isEmpty()) {
          self->refuse(tr("The demo site could not be started."));
          return;
        }
        SiteConfiguration configuration = SiteConfiguration::current();
        configuration.siteHost = host.toStdString();
        configuration.noticeHost = configuration.siteHost;
        configuration.forumHost = configuration.siteHost + "/forum";
        SiteConfiguration::setCurrent(std::move(configuration));
        self->problem_.clear();
        self->shown_ = false;
        emit self->changed();
      });
}

}  // namespace veltramoor
