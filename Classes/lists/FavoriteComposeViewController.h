// The form in which a new filter is typed.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "toolkit/TextField.h"
#include "toolkit/ViewController.h"

namespace veltramoor {

class FavoriteComposeViewController;

/// Who is told how the form was left.
class FavoriteComposeViewControllerDelegate {
 public:
  virtual ~FavoriteComposeViewControllerDelegate() = default;
  /// Saved, with the text as typed.
  virtual void didUpdateList(FavoriteComposeViewController*, const std::string& /*item*/) {}
  virtual void didCancelUpdateList(FavoriteComposeViewController*) {}
};

/// Says while one types whether the text is a valid expression, and if not where and why; and of
/// the torrents seen last, how many it accepts. Main thread only.
class FavoriteComposeViewController : public veltramoor::ViewController {
  Q_OBJECT
  Q_PROPERTY(veltramoor::TextField* newItem READ newItem CONSTANT)
  Q_PROPERTY(bool valid READ isValid NOTIFY judged)
  Q_PROPERTY(QString problem READ problem NOTIFY judged)
  Q_PROPERTY(int problemOffset READ problemOffset NOTIFY judged)
  Q_PROPERTY(QString matchNote READ matchNote NOTIFY judged)

 public:
  /// The delegate is not kept alive. `names`: what the expression is tried on.
  explicit FavoriteComposeViewController(
      std::weak_ptr<FavoriteComposeViewControllerDelegate> delegate,
      std::vector<std::string> names = {});

  void viewDidLoad() override;
  void viewDidAppear() override;

  /// Hands the text to the delegate, whatever it is. The form's button does so only for a valid
  /// one.
  Q_INVOKABLE void updateList();
  Q_INVOKABLE void cancel() override;

  [[nodiscard]] TextField* newItem() { return &newItem_; }
  [[nodiscard]] bool isValid() const { return problem_.isEmpty(); }
  /// Why the text is not valid, "" when it is.
  [[nodiscard]] QString problem() const { return problem_; }
  /// Where: a place between the text's UTF-16 units; -1 when that cannot be said.
  [[nodiscard]] int problemOffset() const { return problemOffset_; }
  [[nodiscard]] QString matchNote() const { return matchNote_; }
  [[nodiscard]] bool wasEditing() const { return wasEditing_; }
  [[nodiscard]] QString tempString() const { return tempString_; }

 signals:
  void judged();

 private:
  void judge();
  void textFieldShouldReturn();
  void textFieldDidEndEditing();

  std::weak_ptr<FavoriteComposeViewControllerDelegate> delegate_;
  std::vector<std::string> names_;
  TextField newItem_;
  QString problem_;
  int problemOffset_ = -1;
  QString matchNote_;
  bool wasEditing_ = false;
  QString tempString_;
};

}  // namespace veltramoor
