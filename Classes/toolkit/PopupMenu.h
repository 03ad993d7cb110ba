// A menu over everything else: what can be done with something on a screen.
#pragma once

#include <QMetaObject>
#include <QObject>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

namespace veltramoor {

/// The one menu of the application. Main thread only.
class PopupMenu : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool open READ isOpen NOTIFY changed)
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(QStringList entries READ entries NOTIFY changed)
  Q_PROPERTY(QRectF beside READ beside NOTIFY changed)
  Q_PROPERTY(bool byKey READ isByKey NOTIFY changed)

 public:
  struct Entry {
    QString title;
    std::function<void()> chosen;
  };
  /// What asked for a menu.
  struct Request {
    /// What it is to open beside, in points of the window.
    QRectF beside = {};
    /// Whether a key did, so that keys begin at the first entry.
    bool byKey = false;
  };

  static PopupMenu& sharedInstance();

  /// Opens in place of a menu already there; without entries nothing happens. It closes by itself
  /// when `owner`, which the entries may use, goes. `title`: what it is about, to be read aloud.
  void open(QObject* owner, const Request& request, const QString& title,
            std::vector<Entry> entries);
  /// Closes, and does what the entry `index` says.
  Q_INVOKABLE void choose(int index);
  Q_INVOKABLE void close();

  [[nodiscard]] bool isOpen() const { return !entries_.empty(); }
  [[nodiscard]] QString title() const { return title_; }
  [[nodiscard]] QStringList entries() const;
  [[nodiscard]] QRectF beside() const { return request_.beside; }
  [[nodiscard]] bool isByKey() const { return request_.byKey; }

 signals:
  void changed();

 private:
  friend class SharedInstances;

  PopupMenu() = default;

  QString title_;
  Request request_;
  std::vector<Entry> entries_;
  QMetaObject::Connection ownerGone_;
};

}  // namespace veltramoor
