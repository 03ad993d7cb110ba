// The alert box on the screen.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <deque>

#include "platform/Alerts.h"

namespace veltramoor {

/// Shows alerts one after another, in the order they came. Main thread only.
class AlertView : public QObject, public AlertPresenter {
  Q_OBJECT
  Q_PROPERTY(bool visible READ isVisible NOTIFY changed)
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(QString message READ message NOTIFY changed)
  Q_PROPERTY(QStringList buttons READ buttons NOTIFY changed)

 public:
  /// A longer message is cut, in UTF-16 units.
  static constexpr qsizetype kLongestMessage = 4000;

  using QObject::QObject;

  void show(Alert alert) override;

  [[nodiscard]] bool isVisible() const { return !alerts_.empty(); }
  [[nodiscard]] QString title() const;
  [[nodiscard]] QString message() const;
  [[nodiscard]] QStringList buttons() const;

  /// Closes the alert on show by its button `index` and shows the next one.
  Q_INVOKABLE void dismissWithButtonIndex(int index);

 signals:
  void changed();

 private:
  std::deque<Alert> alerts_;
};

}  // namespace veltramoor
