// What was sent to the person's computer.
#pragma once

#include <QString>

#include "lists/HistoryTableModel.h"
#include "toolkit/ViewController.h"

namespace veltramoor {

enum class TableViewStyle;

/// The download history, newest first, read anew at each appearance; its entries can be deleted.
/// Fetches nothing, and its rows open nothing. Main thread only.
class HistoryListViewController : public veltramoor::ViewController {
  Q_OBJECT
  Q_PROPERTY(veltramoor::HistoryTableModel* rows READ rows CONSTANT)
  Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)

 public:
  static constexpr double kRowHeight = 37;

  enum EditingStyle { EditingStyleNone, EditingStyleDelete, EditingStyleInsert };
  Q_ENUM(EditingStyle)

  explicit HistoryListViewController(TableViewStyle style);

  void viewWillAppear() override;
  Q_INVOKABLE void reloadHistory();
  /// Deletes, for the style "delete", the entry that row `row` shows from the stored history. The
  /// copy on show loses the entry at index `row` from the oldest, another one unless the row is the
  /// middle one; `reloadHistory` puts that right, for which the view sees.
  Q_INVOKABLE void commitEditingStyle(EditingStyle style, int row);

  [[nodiscard]] HistoryTableModel* rows() { return &rows_; }
  /// Why the list is empty and what to do, in one line; else "".
  [[nodiscard]] QString notice() const;

 signals:
  void noticeChanged();

 private:
  HistoryTableModel rows_;
};

}  // namespace veltramoor
