// The rows of the filter list.
#pragma once

#include <QAbstractListModel>
#include <string>
#include <vector>

#include "lists/listings/Filter.h"

namespace veltramoor {

/// One row a filter, in stored order. Rows are inserted and removed, never reset. Main thread only.
class FavoriteFiltersModel : public QAbstractListModel {
  Q_OBJECT

 public:
  enum Role {
    /// The text as typed.
    RegexRole = Qt::UserRole,
    /// Why the filter accepts nothing; "" for a valid one.
    ProblemRole,
  };

  using QAbstractListModel::QAbstractListModel;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  [[nodiscard]] const std::vector<Filter>& filters() const { return filters_; }
  /// The texts as typed.
  [[nodiscard]] std::vector<std::string> regexes() const;
  /// Keeps the rows that begin or end the list both before and after.
  void setRegexes(const std::vector<std::string>& regexes);
  void remove(int row);

 private:
  std::vector<Filter> filters_;
};

}  // namespace veltramoor
