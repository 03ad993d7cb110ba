// The rows of a torrent list.
#pragma once

#include <QAbstractListModel>
#include <QString>
#include <optional>
#include <vector>

#include "site/Torrent.h"

namespace veltramoor {

/// The torrents in page order and, while more may follow, one "load more" row after them. Rows are
/// inserted, removed and changed one group at a time, never reset. Main thread only.
class TorrentTableModel : public QAbstractListModel {
  Q_OBJECT
  Q_PROPERTY(bool loadMoreAlone READ isLoadMoreAlone NOTIFY reloaded)

 public:
  enum Role {
    /// Whether the row is the "load more" row.
    LoadMoreRole = Qt::UserRole,
    /// Raised whenever the row must be filled again.
    RevisionRole,
    /// The row in words, for assistive technology.
    SummaryRole,
    /// The torrent's name; "" for the "load more" row.
    NameRole,
    /// Whether the torrent has been sent.
    SentRole,
  };

  using QAbstractListModel::QAbstractListModel;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  /// Absent until the first page has arrived.
  [[nodiscard]] const std::optional<std::vector<Torrent>>& torrents() const { return torrents_; }
  [[nodiscard]] int torrentCount() const;
  [[nodiscard]] bool isLoadMoreRow(int row) const;
  /// Whether no torrent stands above that row; told of when the rows on show are filled again.
  [[nodiscard]] bool isLoadMoreAlone() const { return isLoadMoreRow(0); }

  /// Removes all torrents; the list stays one that has arrived.
  void clear();
  /// Back to a list that has not arrived.
  void forget();
  /// Appends a page; the first one makes the list exist.
  void append(std::vector<Torrent> page);
  [[nodiscard]] bool noMoreTorrents() const { return noMoreTorrents_; }
  /// Shows or removes the "load more" row.
  void setNoMoreTorrents(bool none);
  /// Sets the downloaded mark of every torrent of exactly that name.
  void markDownloaded(const std::string& name);
  /// Has every row on show filled again.
  void reload();

 signals:
  void reloaded();

 private:
  [[nodiscard]] bool showsLoadMore() const { return torrents_.has_value() && !noMoreTorrents_; }

  std::optional<std::vector<Torrent>> torrents_;
  bool noMoreTorrents_ = false;
  int revision_ = 0;
};

}  // namespace veltramoor
