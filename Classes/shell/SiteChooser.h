// Which site the application is a client of.
#pragma once

#include <QObject>
#include <QString>

#include "platform/SiteConfiguration.h"
#include "shell/DemoSiteProcess.h"
#include "toolkit/TextField.h"

namespace veltramoor {

/// The part of the login screen that asks for a site when none is configured, or another is wanted.
/// What the person enters is stored in the configuration file; the demo site is for this run alone.
class SiteChooser : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool shown READ isShown NOTIFY changed)
  Q_PROPERTY(QString siteHost READ siteHost NOTIFY changed)
  Q_PROPERTY(QString siteLabel READ siteLabel NOTIFY changed)
  Q_PROPERTY(bool canClose READ canClose NOTIFY changed)
  Q_PROPERTY(bool demoOffered READ isDemoOffered NOTIFY changed)
  Q_PROPERTY(QString problem READ problem NOTIFY changed)
  Q_PROPERTY(veltramoor::TextField* field READ field CONSTANT)

 public:
  SiteChooser();

  /// Whether the person is being asked: from the start while there is no site.
  [[nodiscard]] bool isShown() const { return shown_; }
  /// The site in use, "" for none.
  [[nodiscard]] QString siteHost() const;
  /// What the person is told of it: for the demo site an account to sign in with, too.
  [[nodiscard]] QString siteLabel() const;
  [[nodiscard]] bool canClose() const { return !siteHost().isEmpty(); }
  [[nodiscard]] bool isDemoOffered() const { return DemoSiteProcess::isInstalled() && !starting_; }
  /// One sentence on why the last choice could not be used; else "".
  [[nodiscard]] QString problem() const { return problem_; }
  [[nodiscard]] TextField* field() { return &field_; }

  Q_INVOKABLE void open();
  Q_INVOKABLE void close();
  /// Takes the field's text: a host with or without a port; what browsers write around it is
  /// dropped.
  Q_INVOKABLE void use();
  Q_INVOKABLE void useDemo();

 signals:
  void changed();
  /// The question is about to be shown over the login form.
  void opened();
  /// The site is another one than before, for this run alone or from now on.
  void siteChanged(bool forGood);

 private:
  void refuse(const QString& problem);
  void take(SiteConfiguration configuration, bool forGood);

  TextField field_;
  QString problem_;
  bool shown_ = false;
  bool starting_ = false;
};

}  // namespace veltramoor
