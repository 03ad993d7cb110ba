#include "lists/FavoriteComposeViewController.h"

#include <chrono>
#include <optional>

#include "lists/listings/Filter.h"

namespace veltramoor {
namespace {

/// Between two keys; typing must stay smooth.
constexpr std::chrono::milliseconds kTryFor{10};

/// How many of `names` it accepts; absent when that takes too long to say.
std::optional<int> acceptedOf(const Filter& filter, const std::vector<std::string>& names) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point deadline = Clock::now() + kTryFor;
  int accepted = 0;
  for (const std::string& name : names) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    const FilterVerdict verdict =
        left.count() > 0 ? filter.ask(name, left) : FilterVerdict::GivenUp;
    if (verdict == FilterVerdict::GivenUp) {
      return std::nullopt;
    }
    accepted += verdict == FilterVerdict::Accepted ? 1 : 0;
  }
  return accepted;
}

}  // namespace

FavoriteComposeViewController::FavoriteComposeViewController(
    std::weak_ptr<FavoriteComposeViewControllerDelegate> delegate, std::vector<std::string> names)
    : ViewController(QStringLiteral("FavoriteCompose.qml")),
      delegate_(std::move(delegate)),
      names_(std::move(names)) {
  setTitle(tr("New filter"));
}

void FavoriteComposeViewController::viewDidLoad() {
  wasEditing_ = false;
  tempString_.clear();
  connect(&newItem_, &TextField::changed, this, &FavoriteComposeViewController::judge);
  connect(&newItem_, &TextField::shouldReturn, this,
          &FavoriteComposeViewController::textFieldShouldReturn);
  connect(&newItem_, &TextField::didEndEditing, this,
          &FavoriteComposeViewController::textFieldDidEndEditing);
  judge();
}

void FavoriteComposeViewController::viewDidAppear() { newItem_.becomeFirstResponder(); }

void FavoriteComposeViewController::judge() {
  const Filter filter(newItem_.text().toStdString());
  problem_.clear();
  problemOffset_ = -1;
  matchNote_.clear();
  if (filter.problem()) {
    problem_ = QString::fromStdString(filter.problem()->reason);
    problemOffset_ = filter.problem()->offset ? static_cast<int>(*filter.problem()->offset) : -1;
  } else if (filter.regex().empty()) {
    matchNote_ = tr("An empty filter accepts every torrent.");
  } else if (!names_.empty()) {
    const std::optional<int> accepted = acceptedOf(filter, names_);
    matchNote_ =
        accepted ? tr("Accepts %1 of the %2 torrents seen last.").arg(*accepted).arg(names_.size())
                 : tr("This takes long to match and may be given up on.");
  }
  emit judged();
}

void FavoriteComposeViewController::textFieldShouldReturn() { newItem_.resignFirstResponder(); }

void FavoriteComposeViewController::textFieldDidEndEditing() { newItem_.resignFirstResponder(); }

void FavoriteComposeViewController::updateList() {
  if (const auto delegate = delegate_.lock()) {
    delegate->didUpdateList(this, newItem_.text().toStdString());
  }
}

void FavoriteComposeViewController::cancel() {
  if (const auto delegate = delegate_.lock()) {
    delegate->didCancelUpdateList(this);
  }
}

}  // namespace veltramoor
