#include "lists/HistoryTableModel.h"

#include <QString>
#include <algorithm>
#include <cassert>

namespace veltramoor {

int HistoryTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(names_.size());
}

QVariant HistoryTableModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid) ||
      (role != NameRole && role != Qt::DisplayRole)) {
    return {};
  }
  return QString::fromStdString(names_[indexOf(index.row())]);
}

QHash<int, QByteArray> HistoryTableModel::roleNames() const { return {{NameRole, "name"}}; }

void HistoryTableModel::setNames(const std::vector<std::string>& names) {
  // common[i][j]: how many names the first i of the old and the first j of the new can share.
  std::vector common(names_.size() + 1, std::vector<int>(names.size() + 1));
  for (std::size_t i = 1; i <= names_.size(); ++i) {
    for (std::size_t j = 1; j <= names.size(); ++j) {
      common[i][j] = names_[i - 1] == names[j - 1] ? common[i - 1][j - 1] + 1
                                                   : std::max(common[i - 1][j], common[i][j - 1]);
    }
  }
  // From the newest, which is row 0, to the oldest; what lies before i and j is still to be done.
  std::size_t i = names_.size();
  std::size_t j = names.size();
  for (int row = 0; i > 0 || j > 0;) {
    if (i > 0 && j > 0 && names_[i - 1] == names[j - 1]) {
      --i;
      --j;
      ++row;
    } else if (j > 0 && (i == 0 || common[i][j - 1] >= common[i - 1][j])) {
      beginInsertRows({}, row, row);
      names_.insert(names_.begin() + static_cast<std::ptrdiff_t>(i), names[j - 1]);
      endInsertRows();
      --j;
      ++row;
    } else {
      beginRemoveRows({}, row, row);
      names_.erase(names_.begin() + static_cast<std::ptrdiff_t>(i) - 1);
      endRemoveRows();
      --i;
    }
  }
}

void HistoryTableModel::removeRowAndName(int row) {
  assert(row >= 0 && row < rowCount());
  std::vector<std::string> remaining = names_;
  remaining.erase(remaining.begin() + row);
  beginRemoveRows({}, row, row);
  names_.erase(names_.begin() + static_cast<std::ptrdiff_t>(indexOf(row)));
  endRemoveRows();
  // The rows between this one and its mirror image show another name each.
  names_ = std::move(remaining);
  if (!names_.empty()) {
    emit dataChanged(index(0), index(rowCount() - 1));
  }
}

}  // namespace veltramoor
