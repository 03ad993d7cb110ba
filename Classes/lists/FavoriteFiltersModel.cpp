#include "lists/FavoriteFiltersModel.h"

#include <algorithm>
#include <iterator>

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

std::vector<std::string> FavoriteFiltersModel::regexes() const {
  std::vector<std::string> texts;
  for (const Filter& filter : filters_) {
    texts.push_back(filter.regex());
  }
  return texts;
}

void FavoriteFiltersModel::setRegexes(const std::vector<std::string>& regexes) {
  const auto [first, wanted] = std::ranges::mismatch(filters_, regexes, {}, &Filter::regex);
  auto last = filters_.end();
  auto wantedEnd = regexes.end();
  while (last != first && wantedEnd != wanted &&
         std::prev(last)->regex() == *std::prev(wantedEnd)) {
    --last;
    --wantedEnd;
  }
  const int row = static_cast<int>(first - filters_.begin());
  if (last != first) {
    beginRemoveRows({}, row, static_cast<int>(last - filters_.begin()) - 1);
    filters_.erase(first, last);
    endRemoveRows();
  }
  if (wantedEnd != wanted) {
    beginInsertRows({}, row, row + static_cast<int>(wantedEnd - wanted) - 1);
    for (auto regex = wanted; regex != wantedEnd; ++regex) {
      filters_.emplace(filters_.begin() + row + (regex - wanted), *regex);
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
