#include "lists/TorrentTableModel.h"

#include <iterator>

namespace veltramoor {
namespace {

QString summaryOf(const Torrent& torrent) {
  QString text =
      QStringLiteral("%1, %2, %3, %4 seeders, %5 leechers")
          .arg(QString::fromStdString(torrent.name), QString::fromStdString(torrent.size),
               QString::fromStdString(torrent.date), QString::fromStdString(torrent.up),
               QString::fromStdString(torrent.down));
  if (torrent.isDownloaded) {
    text += QStringLiteral(", sent");
  }
  return text;
}

}  // namespace

int TorrentTableModel::torrentCount() const {
  return torrents_ ? static_cast<int>(torrents_->size()) : 0;
}

int TorrentTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : torrentCount() + (showsLoadMore() ? 1 : 0);
}

bool TorrentTableModel::isLoadMoreRow(int row) const {
  return showsLoadMore() && row == torrentCount();
}

QVariant TorrentTableModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
    return {};
  }
  const bool loadMore = isLoadMoreRow(index.row());
  switch (role) {
    case LoadMoreRole:
      return loadMore;
    case RevisionRole:
      return revision_;
    case SummaryRole:
    case Qt::DisplayRole:
      return loadMore ? tr("Load more")
                      : summaryOf((*torrents_)[static_cast<std::size_t>(index.row())]);
    case NameRole:
      return loadMore
                 ? QString()
                 : QString::fromStdString((*torrents_)[static_cast<std::size_t>(index.row())].name);
    case SentRole:
      return !loadMore && (*torrents_)[static_cast<std::size_t>(index.row())].isDownloaded;
    default:
      return {};
  }
}

QHash<int, QByteArray> TorrentTableModel::roleNames() const {
  return {{LoadMoreRole, "loadMore"},
          {RevisionRole, "revision"},
          {SummaryRole, "summary"},
          {NameRole, "name"},
          {SentRole, "sent"}};
}

void TorrentTableModel::clear() {
  if (!torrents_ || torrents_->empty()) {
    return;
  }
  beginRemoveRows({}, 0, torrentCount() - 1);
  torrents_->clear();
  endRemoveRows();
}

void TorrentTableModel::forget() {
  const int rows = rowCount();
  if (rows > 0) {
    beginRemoveRows({}, 0, rows - 1);
  }
  torrents_.reset();
  if (rows > 0) {
    endRemoveRows();
  }
  emit reloaded();
}

void TorrentTableModel::append(std::vector<Torrent> page) {
  const int before = rowCount();
  if (!torrents_ && !noMoreTorrents_) {
    // The list comes into being together with its "load more" row.
    beginInsertRows({}, before, before + static_cast<int>(page.size()));
    torrents_ = std::move(page);
    endInsertRows();
    return;
  }
  if (page.empty()) {
    torrents_ = torrents_ ? std::move(torrents_) : std::vector<Torrent>{};
    return;
  }
  const int at = torrentCount();
  beginInsertRows({}, at, at + static_cast<int>(page.size()) - 1);
  if (!torrents_) {
    torrents_.emplace();
  }
  torrents_->insert(torrents_->end(), std::make_move_iterator(page.begin()),
                    std::make_move_iterator(page.end()));
  endInsertRows();
}

void TorrentTableModel::setNoMoreTorrents(bool none) {
  if (none == noMoreTorrents_) {
    return;
  }
  if (!torrents_) {
    noMoreTorrents_ = none;
    return;
  }
  const int row = torrentCount();
  if (none) {
    beginRemoveRows({}, row, row);
    noMoreTorrents_ = true;
    endRemoveRows();
  } else {
    beginInsertRows({}, row, row);
    noMoreTorrents_ = false;
    endInsertRows();
  }
}

void TorrentTableModel::markDownloaded(const std::string& name) {
  for (int row = 0; row < torrentCount(); ++row) {
    Torrent& torrent = (*torrents_)[static_cast<std::size_t>(row)];
    torrent.isDownloaded = torrent.isDownloaded || torrent.name == name;
  }
}

void TorrentTableModel::reload() {
  ++revision_;
  if (const int rows = rowCount(); rows > 0) {
    emit dataChanged(index(0), index(rows - 1));
  }
  emit reloaded();
}

}  // namespace veltramoor
