#include "remote/FetchRemoteDiagnosis.h"

#include <utility>

#include "platform/MainThread.h"
#include "remote/ServerInfo.h"

namespace veltramoor {

FetchRemoteDiagnosis::FetchRemoteDiagnosis(Told told, Completion completion, std::stop_token stop)
    : FetchPage(std::nullopt, std::move(completion)),
      settings_(ServerInfo::sharedInstance().settings()),
      told_(std::move(told)),
      stop_(std::move(stop)) {}

void FetchRemoteDiagnosis::fetch() {
  returnObject_ = RemoteDiagnosis::run(
      settings_,
      [this](const DiagnosisStep& step) {
        MainThread::perform([told = told_, step] { told(step); });
      },
      stop_);
  // The screen's last reference is not to be dropped by a worker.
  MainThread::perform([told = std::exchange(told_, {})] {});
}

}  // namespace veltramoor
