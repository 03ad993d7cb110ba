#include "lists/FavoriteFiltersModel.h"

#include <algorithm>

namespace veltramoor {

int FavoriteFiltersModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(filters_.size());
}

QVariant FavoriteFiltersModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
    return {};
  }
  const Filter& filter = filters_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case RegexRole:
    case Qt::DisplayRole:
      return QString::fromStdString(filter.regex());
    case ProblemRole:
      return filter.problem() ? QString::fromStdString(filter.problem()->reason) : QString();
    default:
      return {};
  }
}

QHash<int, QByteArray> FavoriteFiltersModel::roleNames() const {
  return {{RegexRole, "regex"}, {ProblemRole, "problem"}};
}

void FavoriteFiltersModel::setRegexes(const std::vector<std::string>& regexes) {
  const auto [kept, wanted] = std::ranges::mismatch(filters_, regexes, {}, &Filter::regex);
  const int first = static_cast<int>(kept - filters_.begin());
  if (kept != filters_.end()) {
    beginRemoveRows({}, first, rowCount() - 1);
    while (rowCount() > first) {
      filters_.pop_back();
    }
    endRemoveRows();
  }
  if (wanted != regexes.end()) {
    beginInsertRows({}, first, static_cast<int>(regexes.size()) - 1);
    for (auto regex = wanted; regex != regexes.end(); ++regex) {
      filters_.emplace_back(*regex);
    }
    endInsertRows();
  }
}

void FavoriteFiltersModel::remove(int row) {
  beginRemoveRows({}, row, row);
  filters_.erase(filters_.begin() + row);
  endRemoveRows();
}

}  // namespace veltramoor
