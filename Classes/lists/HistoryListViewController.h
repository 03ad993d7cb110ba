// What was sent to the person's computer.
#pragma once

#include <QRectF>
#include <QString>

#include "lists/HistoryTableModel.h"
#include "lists/RemovalOffer.h"
#include "toolkit/ViewController.h"

namespace veltramoor {

enum class TableViewStyle;

/// The download history, newest first, read anew at each appearance; its entries can be deleted.
/// Fetches nothing, and its rows open nothing. Main thread only.
class HistoryListViewController : public veltramoor::ViewController {
  Q_OBJECT
  Q_PROPERTY(veltramoor::HistoryTableModel* rows READ rows CONSTANT)
  Q_PROPERTY(veltramoor::RemovalOffer* removal READ removal CONSTANT)
  Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)

 public:
  static constexpr double kRowHeight = 37;

  enum EditingStyle { EditingStyleNone, EditingStyleDelete, EditingStyleInsert };
  Q_ENUM(EditingStyle)

  explicit HistoryListViewController(TableViewStyle style);

  void viewWillAppear() override;
  /// Ends the offer to undo.
  void viewWillDisappear() override;
  Q_INVOKABLE void reloadHistory();
  /// Deletes, for the style "delete", the entry that row `row` shows from the stored history. The
  /// copy on show loses the entry at index `row` from the oldest, another one unless the row is the
  /// middle one; `reloadHistory` puts that right, for which the view sees.
  Q_INVOKABLE void commitEditingStyle(EditingStyle style, int row);
  /// Opens the menu of row `row` beside that part of the window.
  Q_INVOKABLE void openMenu(int row, const QRectF& beside, bool byKey);

  [[nodiscard]] HistoryTableModel* rows() { return &rows_; }
  /// Stands after a deletion; undone, the rows read what is stored again.
  [[nodiscard]] RemovalOffer* removal() { return &removal_; }
  /// Why the list is empty and what to do, in one line; else "".
  [[nodiscard]] QString notice() const;

 signals:
  void noticeChanged();
  /// The menu's "Delete" of row `row`: the view deletes, for it sees to the reading afterwards.
  void deleteChosen(int row);

 private:
  HistoryTableModel rows_;
  RemovalOffer removal_;
};

}  // namespace veltramoor
