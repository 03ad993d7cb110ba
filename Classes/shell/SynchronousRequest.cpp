#include "shell/SynchronousRequest.h"

#include <QEventLoop>
#include <QTimer>
#include <cassert>
#include <utility>

#include "platform/MainThread.h"
#include "platform/OperationQueue.h"
#include "platform/UrlLoading.h"

namespace veltramoor {
namespace {

// Shared by the waiting caller and the worker; touched on the main thread only.
struct Wait {
  QEventLoop loop;
  bool finished = false;
};

class RequestOperation final : public Operation {
 public:
  RequestOperation(std::shared_ptr<HttpRequest> request, std::shared_ptr<Wait> wait)
      : request_(std::move(request)), wait_(std::move(wait)) {}

  void main() override {
    request_->request();
    // The wait's last reference goes on the main thread, where its event loop lives.
    MainThread::perform([wait = std::move(wait_)] {
      wait->finished = true;
      wait->loop.quit();
    });
  }

 private:
  std::shared_ptr<HttpRequest> request_;
  std::shared_ptr<Wait> wait_;
};

// A few, so that one server that hangs does not keep the next request waiting.
OperationQueue& workers() {
  // Made first, so that it is there until the last worker has ended.
  UrlLoading::sharedInstance();
  static OperationQueue queue(4);
  return queue;
}

}  // namespace

bool requestSynchronously(const std::shared_ptr<HttpRequest>& request,
                          std::chrono::milliseconds limit) {
  assert(MainThread::isCurrent());
  const auto wait = std::make_shared<Wait>();
  workers().addOperation(std::make_shared<RequestOperation>(request, wait));
  QTimer timer;
  if (limit > std::chrono::milliseconds::zero()) {
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &wait->loop, &QEventLoop::quit);
    timer.start(limit);
  }
  wait->loop.exec(QEventLoop::ExcludeUserInputEvents);
  return wait->finished;
}

}  // namespace veltramoor
