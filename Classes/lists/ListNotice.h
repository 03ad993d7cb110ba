// The one line that a list says of itself.
#pragma once

#include <QObject>
#include <QString>

#include "remote/RemoteDiagnosis.h"
#include "site/PageTrouble.h"

namespace veltramoor {

/// Why a list is empty, has ended early, or is not what was asked for, and what a tap does about
/// it.
struct ListNotice {
  enum class Tap {
    Nothing,
    /// Asks for the list anew.
    Refresh,
    /// Asks again for what did not come.
    Retry,
    RemoteSettings,
    /// Opens the form for a favourites filter.
    NewFilter,
  };

  /// Of a page that gave no rows; `hasRows`: whether the list has some nevertheless, `emptyText`:
  /// what it says when the site simply has nothing for it.
  [[nodiscard]] static ListNotice ofTrouble(const PageTrouble& trouble, bool hasRows,
                                            const QString& emptyText);
  [[nodiscard]] static ListNotice ofFailedSend(const DiagnosisStep& step);
  /// The rows were asked for with other settings than the present ones.
  [[nodiscard]] static ListNotice ofOtherSettings();

  QString text = {};
  /// What the tap does, in words; "" where it does nothing.
  QString action = {};
  Tap tap = Tap::Nothing;

  /// Both, as one who does not see them apart hears them.
  [[nodiscard]] QString whole() const {
    return action.isEmpty() ? text : text + QLatin1Char(' ') + action;
  }

  friend bool operator==(const ListNotice&, const ListNotice&) = default;
};

/// What a list has to say of its sends, its settings and its pages. It says the most urgent at a
/// time, and none takes the place of another for good. Main thread only.
class ListNotices : public QObject {
  Q_OBJECT

 public:
  [[nodiscard]] const ListNotice& current() const {
    return !ofSend_.text.isEmpty() ? ofSend_ : !ofSettings_.text.isEmpty() ? ofSettings_ : ofPages_;
  }
  void setOfSend(const ListNotice& notice) { set(ofSend_, notice); }
  void setOfSettings(const ListNotice& notice) { set(ofSettings_, notice); }
  void setOfPages(const ListNotice& notice) { set(ofPages_, notice); }

 signals:
  void changed();

 private:
  void set(ListNotice& of, const ListNotice& notice) {
    if (of != notice) {
      of = notice;
      emit changed();
    }
  }

  ListNotice ofSend_;
  ListNotice ofSettings_;
  ListNotice ofPages_;
};

}  // namespace veltramoor
