#include "remote/screens/DiagnosisModel.h"

#include <utility>

#include "remote/FetchRemoteDiagnosis.h"

namespace veltramoor {

int DiagnosisModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(steps_.size());
}

QVariant DiagnosisModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) {
    return {};
  }
  const DiagnosisStep& step = steps_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case TextRole:
      return QString::fromStdString(step.text);
    case OkRole:
      return step.ok;
    default:
      return {};
  }
}

QHash<int, QByteArray> DiagnosisModel::roleNames() const {
  return {{TextRole, "text"}, {OkRole, "ok"}};
}

void DiagnosisModel::begin(std::shared_ptr<void> owner) {
  forget();
  running_ = true;
  stop_ = std::stop_source();
  const int run = run_;
  auto told = [this, owner, run](const DiagnosisStep& step) {
    if (run == run_) {
      append(step);
    }
  };
  auto ended = [this, owner = std::move(owner), run](const std::vector<DiagnosisStep>&) {
    if (run == run_) {
      running_ = false;
      emit changed();
    }
  };
  queue_.addOperation(
      std::make_shared<FetchRemoteDiagnosis>(std::move(told), std::move(ended), stop_.get_token()));
  emit changed();
}

void DiagnosisModel::forget() {
  stop_.request_stop();
  ++run_;
  running_ = false;
  if (!steps_.empty()) {
    beginRemoveRows({}, 0, rowCount() - 1);
    steps_.clear();
    endRemoveRows();
  }
  emit changed();
}

void DiagnosisModel::append(const DiagnosisStep& step) {
  beginInsertRows({}, rowCount(), rowCount());
  steps_.push_back(step);
  endInsertRows();
  emit changed();
}

QString DiagnosisModel::verdict() const {
  if (running_ || steps_.empty()) {
    return {};
  }
  return steps_.back().ok ? tr("All is well: torrents can be sent.")
                          : QString::fromStdString(steps_.back().text);
}

}  // namespace veltramoor
