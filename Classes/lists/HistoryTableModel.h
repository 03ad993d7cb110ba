// The rows of the download history.
#pragma once

#include <QAbstractListModel>
#include <string>
#include <vector>

namespace veltramoor {

/// A copy of the history, oldest first; row 0 shows the newest. Rows are inserted and removed,
/// never reset. Main thread only.
class HistoryTableModel : public QAbstractListModel {
  Q_OBJECT

 public:
  /// The name sent.
  enum Role { NameRole = Qt::UserRole };

  using QAbstractListModel::QAbstractListModel;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  [[nodiscard]] const std::vector<std::string>& names() const { return names_; }
  /// Becomes `names`, oldest first. What is common to both keeps its rows.
  void setNames(const std::vector<std::string>& names);
  /// Removes row `row` and, of the names, the one at index `row`, from the oldest.
  void removeRowAndName(int row);

 private:
  [[nodiscard]] std::size_t indexOf(int row) const {
    return names_.size() - 1 - static_cast<std::size_t>(row);
  }

  std::vector<std::string> names_;
};

}  // namespace veltramoor
