#include "lists/ListNotice.h"

#include <QCoreApplication>

#include "platform/SiteConfiguration.h"

namespace veltramoor {
namespace {

QString tr(const char* text) { return QCoreApplication::translate("ListNotice", text); }

bool isSilence(const PageTrouble& trouble) {
  if (!trouble.failure) {
    return true;
  }
  switch (trouble.failure->kind) {
    case TransferFailureKind::NameNotFound:
    case TransferFailureKind::Refused:
    case TransferFailureKind::Unreachable:
    case TransferFailureKind::TimedOut:
      return true;
    default:
      return false;
  }
}

QString withoutSite() {
  return tr("No site is set. Start with --site-host, or set site-host in %1.")
      .arg(QString::fromStdString(SiteConfiguration::defaultFile().string()));
}

}  // namespace

ListNotice ListNotice::ofTrouble(const PageTrouble& trouble, bool hasRows,
                                 const QString& emptyText) {
  if (SiteConfiguration::current().siteHost.empty()) {
    return {.text = withoutSite()};
  }
  const QString reason = QString::fromStdString(sentenceOf(trouble));
  if (hasRows) {
    const QString what = trouble.mayBeEmptyList() ? tr("The next page has no torrents.")
                                                  : tr("The next page did not come.");
    return {.text = what + QLatin1Char(' ') + reason,
            .action = tr("Tap here to ask for it again."),
            .tap = Tap::Retry};
  }
  ListNotice notice{.text = reason, .action = tr("Tap here to try again."), .tap = Tap::Retry};
  switch (trouble.kind) {
    case PageTrouble::Kind::NotReached:
      notice.text =
          (isSilence(trouble) ? tr("The site did not answer. %1") : tr("The list did not come. %1"))
              .arg(reason);
      break;
    case PageTrouble::Kind::SignedOut:
      notice.text = tr("%1 Log out, then sign in.").arg(reason);
      break;
    case PageTrouble::Kind::NoRows:
      return {.text = emptyText + QLatin1Char('\n') + reason};
    case PageTrouble::Kind::Moved:
      notice.text = tr("%1 Log out to choose it as your site.").arg(reason);
      break;
    case PageTrouble::Kind::ErrorStatus:
      break;
  }
  return notice;
}

ListNotice ListNotice::ofFailedSend(const DiagnosisStep& step) {
  const QString text = tr("Not sent. %1").arg(QString::fromStdString(step.text));
  if (!step.ofSettings) {
    return {.text = text};
  }
  return {
      .text = text, .action = tr("Tap here for the remote settings."), .tap = Tap::RemoteSettings};
}

ListNotice ListNotice::ofOtherSettings() {
  return {.text = tr("The settings have changed since."),
          .action = tr("Tap here to list by the new ones."),
          .tap = Tap::Refresh};
}

}  // namespace veltramoor
