#include "shell/pages/ForumWebViewController.h"

#include <utility>

#include "platform/SiteConfiguration.h"
#include "shell/pages/OpeningList.h"
#include "site/HttpRequestRegExForum.h"
#include "toolkit/InputWatch.h"

namespace veltramoor {
namespace {

// A forum page that leads away by itself must not have the front page fetched for ever: so many
// times a minute without a touch in between, then the page stays.
constexpr std::chrono::minutes kWindow{1};
constexpr std::size_t kRestartsUntouched = 2;

}  // namespace

ForumWebViewController::ForumWebViewController(std::optional<Url> url,
                                               std::shared_ptr<OpeningList> target)
    : WebViewController(std::move(url), std::move(target)) {
  setTitle(tr("Forum"));
  InputWatch::sharedInstance();
  tabBarItem()->set(tr("Forum"), QStringLiteral("tabbar-forum.png"), 0);
  dropAtLogout();
}

void ForumWebViewController::viewWillAppear() {
  appearWithNavigationBarHidden(true);
  restarts_.clear();
  const bool failed = myWebView() != nullptr && !myWebView()->error().isEmpty();
  if (std::exchange(stoppedEarly_, false) || failed) {
    viewDidLoad();
  }
}

void ForumWebViewController::viewDidLoad() {
  showLoading(-44);
  setUrl(Url::parse("http://" + SiteConfiguration::current().forumHost + "/"));
  fetch(url(), httpRequestClass<HttpRequestRegExForum>());
}

void ForumWebViewController::initializeWebView(std::optional<std::string> html) {
  result_ = std::move(html);
  WebPage& page = makeWebView(/*handset=*/true);
  hideLoading();
  showLoading(-20);
  show(page, result_, url());
}

bool ForumWebViewController::mayStartAgain() {
  const auto now = InputWatch::Clock::now();
  const bool touched =
      restarts_.empty() || InputWatch::sharedInstance().lastInput() > restarts_.back();
  std::erase_if(restarts_, [&](const auto& time) { return touched || now - time > kWindow; });
  if (restarts_.size() >= kRestartsUntouched) {
    return false;
  }
  restarts_.push_back(now);
  return true;
}

bool ForumWebViewController::shouldStartLoadWithRequest(const QUrl& url, int) {
  const std::string text = url.toEncoded().toStdString();
  if (text.empty() || text.find(SiteConfiguration::current().forumHost) != std::string::npos) {
    return true;
  }
  myWebView()->stop();
  if (mayStartAgain()) {
    viewDidLoad();
  } else {
    endLoad(false);
  }
  return false;
}

}  // namespace veltramoor
