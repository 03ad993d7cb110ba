#include "shell/SynchronousRequest.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QTimer>
#include <QWindow>
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

// Keeps the person's input from the windows: a tap that came while a page was on its way was not
// meant for the screen that the page opens.
class InputFilter final : public QObject {
 public:
  InputFilter(QEventLoop& loop, WithEscape escape) : loop_(loop), escape_(escape) {
    qApp->installEventFilter(this);
  }

  bool eventFilter(QObject* receiver, QEvent* event) override {
    switch (event->type()) {
      case QEvent::KeyPress:
        if (escape_ == WithEscape::GivesUp &&
            static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
          loop_.quit();
        }
        [[fallthrough]];
      case QEvent::KeyRelease:
      case QEvent::ShortcutOverride:
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::MouseMove:
      case QEvent::Wheel:
      case QEvent::TouchBegin:
      case QEvent::TouchUpdate:
      case QEvent::TouchEnd:
        return qobject_cast<QWindow*>(receiver) != nullptr;
      default:
        return false;
    }
  }

 private:
  QEventLoop& loop_;
  WithEscape escape_;
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
                          std::chrono::milliseconds limit, WithEscape escape) {
  assert(MainThread::isCurrent());
  const auto wait = std::make_shared<Wait>();
  workers().addOperation(std::make_shared<RequestOperation>(request, wait));
  QTimer timer;
  timer.setSingleShot(true);
  QObject::connect(&timer, &QTimer::timeout, &wait->loop, &QEventLoop::quit);
  timer.start(limit);
  const InputFilter filter(wait->loop, escape);
  wait->loop.exec();
  return wait->finished;
}

}  // namespace veltramoor
