#include "shell/DemoSiteProcess.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <utility>

#include "toolkit/SharedInstances.h"

namespace veltramoor {
namespace {

constexpr int kStopMilliseconds = 1000;

QString program() {
  return QCoreApplication::applicationDirPath() + QStringLiteral("/veltramoor-demo-site");
}

}  // namespace

DemoSiteProcess::DemoSiteProcess() {
  connect(&process_, &QProcess::readyReadStandardOutput, this, [this] { readLine(); });
  connect(&process_, &QProcess::errorOccurred, this, [this] { finish({}); });
  connect(&process_, &QProcess::finished, this, [this] { finish({}); });
}

void DemoSiteProcess::stop() {
  waiting_.clear();
  host_.clear();
  process_.terminate();
  if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(kStopMilliseconds)) {
    process_.kill();
    process_.waitForFinished(kStopMilliseconds);
  }
}

DemoSiteProcess& DemoSiteProcess::sharedInstance() {
  return SharedInstances::of<DemoSiteProcess>();
}

bool DemoSiteProcess::isInstalled() { return QFileInfo(program()).isExecutable(); }

void DemoSiteProcess::start(Started started) {
  waiting_.push_back(std::move(started));
  if (!host_.isEmpty()) {
    finish(host_);
  } else if (process_.state() == QProcess::NotRunning) {
    process_.start(program(),
                   {QStringLiteral("--port"), QStringLiteral("0"), QStringLiteral("--until-eof")});
  }
}

void DemoSiteProcess::readLine() {
  while (process_.canReadLine()) {
    const QString line = QString::fromUtf8(process_.readLine()).trimmed();
    const QString greeting = QStringLiteral("listening on ");
    if (line.startsWith(greeting)) {
      finish(line.mid(greeting.size()));
    }
  }
}

void DemoSiteProcess::finish(const QString& host) {
  host_ = host;
  for (const Started& started : std::exchange(waiting_, {})) {
    started(host);
  }
}

}  // namespace veltramoor
