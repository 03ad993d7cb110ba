#include "lists/EditFavoriteListViewController.h"

#include "lists/listings/FilterStore.h"
#include "toolkit/NavigationController.h"
#include "toolkit/Presentation.h"

namespace veltramoor {
namespace {

std::vector<std::unique_ptr<BarButton>> one(std::unique_ptr<BarButton> button) {
  std::vector<std::unique_ptr<BarButton>> buttons;
  buttons.push_back(std::move(button));
  return buttons;
}

}  // namespace

EditFavoriteListViewController::EditFavoriteListViewController(TableViewStyle,
                                                               std::vector<std::string> names)
    : ViewController(QStringLiteral("EditFavoriteList.qml")), names_(std::move(names)) {
  setTitle(tr("Favorite filters"));
  reloadFilters();
}

void EditFavoriteListViewController::viewDidLoad() {
  auto back = std::make_unique<BarButton>(QStringLiteral("filtersBackButton"), tr("Back"),
                                          QStringLiteral("back.png"));
  connect(back.get(), &BarButton::clicked, this, &EditFavoriteListViewController::cancel);
  leftBarItem()->set(BarButton::kWidth, one(std::move(back)));
  auto add = std::make_unique<BarButton>(QStringLiteral("addFilterButton"), tr("Add a filter"),
                                         QStringLiteral("add.png"));
  connect(add.get(), &BarButton::clicked, this, &EditFavoriteListViewController::addFavorite);
  rightBarItem()->set(BarButton::kWidth, one(std::move(add)));
}

void EditFavoriteListViewController::viewWillAppear() {
  if (navigationController() != nullptr) {
    navigationController()->setNavigationBarHidden(false);
  }
  if (filters_.rowCount() == 0) {
    addFavorite();
  }
}

void EditFavoriteListViewController::reloadFilters() {
  filters_.setRegexes(FilterStore::regexes());
}

void EditFavoriteListViewController::addFavorite() {
  Presentation::sharedInstance().present(std::make_shared<FavoriteComposeViewController>(
      std::weak_ptr<FavoriteComposeViewControllerDelegate>(sharedController(this)), names_));
}

void EditFavoriteListViewController::didUpdateList(FavoriteComposeViewController*,
                                                   const std::string& item) {
  // Refused, it stays to be tried again as it was typed.
  if (!FilterStore::append(item)) {
    return;
  }
  reloadFilters();
  Presentation::sharedInstance().dismiss();
}

void EditFavoriteListViewController::didCancelUpdateList(FavoriteComposeViewController*) {
  Presentation::sharedInstance().dismiss();
}

void EditFavoriteListViewController::commitEditingStyle(EditingStyle style, int row) {
  if (style != EditingStyle::Delete || row < 0 || row >= filters_.rowCount()) {
    return;
  }
  const auto index = static_cast<std::size_t>(row);
  if (FilterStore::remove(index, filters_.filters()[index].regex())) {
    filters_.remove(row);
  }
}

}  // namespace veltramoor
