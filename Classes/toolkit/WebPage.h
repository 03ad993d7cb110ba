// A web view's state and what it is asked to do.
#pragma once

#include <QObject>
#include <QString>
#include <QUrl>
#include <QVariant>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/Url.h"

namespace veltramoor {

/// Hears of a web view's loads, on the main thread.
class WebPageDelegate {
 public:
  virtual ~WebPageDelegate() = default;

  /// Whether the page may go to `url`; asked for whole pages, neither for frames within one nor for
  /// what the application itself loads as text.
  virtual bool shouldStartLoadWithRequest(const QUrl& url, int navigationType) = 0;
  virtual void webViewDidStartLoad() = 0;
  virtual void webViewDidFinishLoad() = 0;
  /// `error`: one line for the person, without credentials; "" for a load that the page or the
  /// engine gave up: a download, a link to a magnet, an answer without content, a script's stop.
  virtual void didFailLoadWithError(const QString& error) = 0;
  /// The application itself stopped the load, to leave the page or to make way for another.
  virtual void webViewWasStopped() = 0;
  /// The person tapped `link`, a magnet link, which leads the page nowhere. As the page has it.
  virtual void didTapMagnetLink(const QString& /*link*/) {}
};

/// One web view with its own history. It draws nothing: a view takes it, does what the signals ask
/// and reports back through the invokables. What is asked for before there is a view is kept until
/// then, the last load only. Main thread only.
class WebPage : public QObject {
  Q_OBJECT
  Q_PROPERTY(QString pageId READ pageId CONSTANT)
  Q_PROPERTY(QString userAgent READ userAgent CONSTANT)
  Q_PROPERTY(QString profileKey READ profileKey CONSTANT)
  Q_PROPERTY(bool scalesPageToFit READ scalesPageToFit CONSTANT)
  Q_PROPERTY(bool loading READ isLoading NOTIFY changed)
  Q_PROPERTY(QString error READ error NOTIFY changed)
  Q_PROPERTY(QString messageKey READ messageKey CONSTANT)

 public:
  /// `profileKey`: pages of another key know nothing of this one's logins to servers.
  WebPage(QString userAgent, QString profileKey, WebPageDelegate* delegate);
  ~WebPage() override;

  /// Shows `html` as the page at `base`, of any size. Credentials in `base` do not reach the page:
  /// they answer when its server asks for them.
  void loadHtml(const QString& html, const std::optional<Url>& base);
  Q_INVOKABLE void loadUrl(const QUrl& url);
  void stop();
  /// Stops, and from then on the delegate hears of nothing and the page goes nowhere: for a page
  /// that is about to be deleted, whose view may still be at work.
  void abandon();
  /// Asks the server for the address on show; what a form sent there is not sent again.
  void reload() { emit reloadRequested(); }
  void goBack();
  void goForward();
  /// Shows the page again that was on show before a load failed; false when there is none.
  bool leaveError();
  /// Runs `source` in the page; `callback` gets its value, nothing when the page went meanwhile.
  void runScript(const QString& source, std::function<void(const QVariant&)> callback = {});
  /// Shows `text` in the page's place, as for a page that could not be loaded; "" takes an error
  /// away and leaves the place empty.
  void showError(const QString& text);

  [[nodiscard]] bool isLoading() const { return loading_; }
  /// Whether the page on show is text that the application gave, and not one it led to.
  [[nodiscard]] bool isShowingText() const { return showingText_; }
  [[nodiscard]] bool canGoBack() const { return canGoBack_; }
  [[nodiscard]] bool canGoForward() const { return canGoForward_; }
  /// Whether the engine has a page to show, perhaps below an error.
  [[nodiscard]] bool hasPage() const { return shown_; }
  /// What failed, in one line; "" while nothing has.
  [[nodiscard]] QString error() const { return error_; }
  /// The address whose load failed; empty for text of the application's and while nothing has.
  [[nodiscard]] QUrl failedUrl() const { return error_.isEmpty() ? QUrl() : failedUrl_; }
  /// Credentials included.
  [[nodiscard]] const std::optional<Url>& baseUrl() const { return base_; }
  [[nodiscard]] const QString& html() const { return html_; }
  [[nodiscard]] QString userAgent() const { return userAgent_; }
  [[nodiscard]] QString profileKey() const { return profileKey_; }
  /// Distinguishes the pages of a process.
  [[nodiscard]] QString pageId() const { return id_; }
  /// Whether a page wider than the view is drawn smaller.
  [[nodiscard]] bool scalesPageToFit() const { return scalesPageToFit_; }
  /// To be set before the first load.
  void setScalesPageToFit(bool scales) { scalesPageToFit_ = scales; }
  /// Name and password for the server at `host` and `port`, before those in the base address.
  void setCredentials(const QString& host, int port, const QString& user, const QString& password);

  // For the view.
  /// Why no page can be shown at all; "" when one can. The web engine ends the program when it is
  /// started by root with its sandbox on.
  Q_INVOKABLE QString obstacle() const;
  Q_INVOKABLE void attach();
  Q_INVOKABLE void reportStarted();
  Q_INVOKABLE void reportFinished();
  /// `reason`: what the engine says; "" for a load that was refused or that stopped by itself.
  Q_INVOKABLE void reportFailed(const QUrl& url, const QString& reason);
  /// Nothing is left of the page on show.
  Q_INVOKABLE void reportReplaced();
  /// What drew the page on show, at `url`, has ended; `reason` as above.
  Q_INVOKABLE void reportGone(const QUrl& url, const QString& reason);
  /// There is no engine to show anything with: this load fails and every later one.
  Q_INVOKABLE void reportUnusable(const QString& reason);
  Q_INVOKABLE void reportHistory(bool canGoBack, bool canGoForward);
  Q_INVOKABLE void reportScriptResult(int number, const QVariant& value);
  Q_INVOKABLE bool shouldStartLoad(const QUrl& url, int navigationType, bool mainFrame);
  /// User name and password for a server that asks; empty when it is none of ours.
  Q_INVOKABLE QStringList answerChallenge(const QUrl& url);
  /// What the view's own script in the page puts before what it has to say; no page knows it.
  [[nodiscard]] QString messageKey() const { return messageKey_; }
  Q_INVOKABLE void reportTappedMagnetLink(const QString& link);

 signals:
  void changed();
  void htmlRequested(const QString& html, const QUrl& base);
  void urlRequested(const QUrl& url);
  void stopRequested();
  /// Of the last stop that was asked for: when what the engine had said until then has been heard,
  /// and when nobody need wait any longer for more of it.
  void stopHandled();
  void stopOverdue();
  void reloadRequested();
  void backRequested();
  void forwardRequested();
  void scriptRequested(int number, const QString& source);

 private:
  // More than a page's requests that are under way together.
  static constexpr int kChallenges = 30;

  [[nodiscard]] QStringList credentialsFor(const QUrl& url) const;
  void ask(std::function<void()> request);
  void begin();
  void setError(const QString& text);

  struct Login {
    QString host;
    int port;
    QString user;
    QString password;
  };

  QString id_;
  QString userAgent_;
  QString profileKey_;
  WebPageDelegate* delegate_;
  std::optional<Url> base_;
  QString html_;
  QString messageKey_;
  QString error_;
  QUrl failedUrl_;
  QString unusable_;
  bool attached_ = false;
  bool loading_ = false;
  bool announced_ = false;
  // Whether a page is there, perhaps below an error.
  bool shown_ = false;
  // Whether what is being loaded, and what was loaded last, is text of the application's.
  bool loadingText_ = false;
  bool showingText_ = false;
  bool canGoBack_ = false;
  bool canGoForward_ = false;
  bool scalesPageToFit_ = false;
  std::function<void()> waiting_;
  std::vector<Login> logins_;
  std::unordered_map<int, std::function<void(const QVariant&)>> callbacks_;
  int scripts_ = 0;
  int stops_ = 0;
  int challenges_ = 0;
};

}  // namespace veltramoor
