// The steps of the remote client's diagnosis, as a screen shows them.
#pragma once

#include <QAbstractListModel>
#include <memory>
#include <stop_token>
#include <vector>

#include "platform/OperationQueue.h"
#include "remote/RemoteDiagnosis.h"

namespace veltramoor {

/// One row a step that is done, while the diagnosis runs and after it. Main thread only.
class DiagnosisModel : public QAbstractListModel {
  Q_OBJECT
  Q_PROPERTY(bool running READ isRunning NOTIFY changed)
  Q_PROPERTY(int count READ count NOTIFY changed)
  Q_PROPERTY(QString verdict READ verdict NOTIFY changed)
  Q_PROPERTY(bool lastIsOk READ lastIsOk NOTIFY changed)

 public:
  enum Role { TextRole = Qt::UserRole, OkRole };

  using QAbstractListModel::QAbstractListModel;
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  /// Tries the settings as they are stored now; `owner`, whom this belongs to, lives until the end.
  /// What an earlier run has found, or still finds, is forgotten.
  void begin(std::shared_ptr<void> owner);
  /// Ends a run and takes its rows away: the settings are no longer those that were tried.
  void forget();

  [[nodiscard]] bool isRunning() const { return running_; }
  [[nodiscard]] int count() const { return rowCount(); }
  [[nodiscard]] bool lastIsOk() const { return !steps_.empty() && steps_.back().ok; }
  /// The step that failed, or that all is well; "" before the end.
  [[nodiscard]] QString verdict() const;
  [[nodiscard]] const std::vector<DiagnosisStep>& steps() const { return steps_; }
  [[nodiscard]] bool hasBackgroundWork() const { return queue_.operationCount() > 0; }

 signals:
  void changed();

 private:
  void append(const DiagnosisStep& step);

  std::vector<DiagnosisStep> steps_;
  bool running_ = false;
  // Steps of an earlier one are ignored.
  int run_ = 0;
  std::stop_source stop_;
  // Last, so that its thread is joined before anything else goes.
  OperationQueue queue_{1};
};

}  // namespace veltramoor
