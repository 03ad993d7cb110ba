#include "lists/EditFavoriteListViewController.h"

#include <QClipboard>
#include <QGuiApplication>

#include "lists/listings/FilterStore.h"
#include "toolkit/NavigationController.h"
#include "toolkit/PopupMenu.h"
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
    : ViewController(QStringLiteral("EditFavoriteList.qml")),
      removal_(&FilterStore::insertAt),
      names_(std::move(names)) {
  setTitle(tr("Favorite filters"));
  connect(&removal_, &RemovalOffer::undone, this, &EditFavoriteListViewController::reloadFilters);
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

void EditFavoriteListViewController::viewWillDisappear() { removal_.end(); }

void EditFavoriteListViewController::reloadFilters() {
  filters_.setRegexes(FilterStore::regexes());
}

void EditFavoriteListViewController::addFavorite() {
  removal_.end();
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
  const std::vector<std::string> before = filters_.regexes();
  const std::string& regex = before[index];
  if (FilterStore::remove(index, regex)) {
    filters_.remove(row);
    removal_.make(ArrayPlace::of(before, index), regex,
                  regex.empty() ? tr("the empty filter") : QString::fromStdString(regex));
  }
}

void EditFavoriteListViewController::openMenu(int row, const QRectF& beside, bool byKey) {
  if (row < 0 || row >= filters_.rowCount()) {
    return;
  }
  const QString regex = filters_.index(row).data(FavoriteFiltersModel::RegexRole).toString();
  PopupMenu::sharedInstance().open(
      this, {.beside = beside, .byKey = byKey}, regex,
      {{.title = tr("Copy"), .chosen = [regex] { QGuiApplication::clipboard()->setText(regex); }},
       {.title = tr("Delete"), .chosen = [this, row] { emit deleteChosen(row); }}});
}

}  // namespace veltramoor
