#include "shell/overlay/SynchronousRequest.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QTimer>
#include <QWindow>
#include <cassert>
#include <stop_token>
#include <utility>

#include "platform/MainThread.h"
#include "platform/OperationQueue.h"
#include "platform/UrlLoading.h"
#include "shell/overlay/LoadingIndicator.h"
#include "toolkit/SharedInstances.h"

namespace veltramoor {
namespace {

// Shared by the waiting caller and the worker; touched on the main thread only.
struct Exchange {
  QEventLoop loop;
  // What ends the loop without a word is the program's end.
  WaitEnd end = WaitEnd::Closing;

  void quit(WaitEnd reason) {
    end = reason;
    loop.quit();
  }
};

class RequestOperation final : public Operation {
 public:
  RequestOperation(std::shared_ptr<HttpRequest> request, std::shared_ptr<Exchange> exchange)
      : request_(std::move(request)), exchange_(std::move(exchange)) {}

  void main() override {
    request_->request();
    // Its last reference goes on the main thread, where its event loop lives.
    MainThread::perform([exchange = std::move(exchange_)] { exchange->quit(WaitEnd::Finished); });
  }

 private:
  std::shared_ptr<HttpRequest> request_;
  std::shared_ptr<Exchange> exchange_;
};

// Keeps the person's input from the windows: a tap that came while a page was on its way was not
// meant for the screen that the page opens.
class InputFilter final : public QObject {
 public:
  InputFilter(Exchange& exchange, GivingUp givingUp) : exchange_(exchange), givingUp_(givingUp) {
    qApp->installEventFilter(this);
    if (givingUp == GivingUp::Allowed) {
      QTimer::singleShot(LoadingIndicator::current().patience(), this, [this] {
        tapGivesUp_ = true;
        LoadingIndicator::current().setHint(QObject::tr("Tap to stop waiting"));
      });
    }
  }

  ~InputFilter() override { LoadingIndicator::current().setHint({}); }
  InputFilter(const InputFilter&) = delete;
  InputFilter& operator=(const InputFilter&) = delete;

  bool eventFilter(QObject* receiver, QEvent* event) override {
    switch (event->type()) {
      case QEvent::ShortcutOverride:
        // Refused, the key would be looked up among the screens' shortcuts.
        event->accept();
        return true;
      case QEvent::KeyPress:
        if (givingUp_ == GivingUp::Allowed &&
            static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
          exchange_.quit(WaitEnd::GivenUp);
        }
        return qobject_cast<QWindow*>(receiver) != nullptr;
      case QEvent::MouseButtonPress:
      case QEvent::TouchBegin:
        if (tapGivesUp_) {
          exchange_.quit(WaitEnd::GivenUp);
        }
        [[fallthrough]];
      case QEvent::KeyRelease:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::MouseMove:
      case QEvent::Wheel:
      case QEvent::TouchUpdate:
      case QEvent::TouchEnd:
        return qobject_cast<QWindow*>(receiver) != nullptr;
      default:
        return false;
    }
  }

 private:
  Exchange& exchange_;
  GivingUp givingUp_;
  bool tapGivesUp_ = false;
};

struct Workers {
  // Made first, so that it is there until the last worker has ended.
  UrlLoading& loading = UrlLoading::sharedInstance();
  // A few, so that a request whose name look-up hangs does not keep the next one waiting.
  OperationQueue queue{4};
};

}  // namespace

WaitEnd requestSynchronously(const std::shared_ptr<HttpRequest>& request,
                             std::chrono::milliseconds limit, GivingUp givingUp) {
  assert(MainThread::isCurrent());
  const auto exchange = std::make_shared<Exchange>();
  std::stop_source stop;
  request->setStop(stop.get_token());
  SharedInstances::of<Workers>().queue.addOperation(
      std::make_shared<RequestOperation>(request, exchange));
  QTimer timer;
  timer.setSingleShot(true);
  QObject::connect(&timer, &QTimer::timeout, [&exchange] { exchange->quit(WaitEnd::GivenUp); });
  timer.start(limit);
  const InputFilter filter(*exchange, givingUp);
  exchange->loop.exec();
  if (exchange->end != WaitEnd::Finished) {
    stop.request_stop();
  }
  return exchange->end;
}

}  // namespace veltramoor
