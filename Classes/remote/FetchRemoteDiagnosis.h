// The diagnosis of the remote client in the background.
#pragma once

#include <functional>
#include <stop_token>
#include <vector>

#include "remote/RemoteDiagnosis.h"
#include "site/FetchPage.h"

namespace veltramoor {

/// Tells of each step on the main thread as it is done, and delivers all of them at the end. The
/// settings are those of the moment at which it is made.
class FetchRemoteDiagnosis final : public FetchPage<std::vector<DiagnosisStep>> {
 public:
  using Told = std::function<void(const DiagnosisStep&)>;

  /// `told` must keep its screen alive, as the completion does. Asking `stop` ends it at once.
  FetchRemoteDiagnosis(Told told, Completion completion, std::stop_token stop = {});

 private:
  void fetch() override;

  RemoteSettings settings_;
  Told told_;
  std::stop_token stop_;
};

}  // namespace veltramoor
