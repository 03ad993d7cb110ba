#include "lists/SearchListViewController.h"

#include "settings/SearchDisplaySettingsViewController.h"
#include "toolkit/NavigationController.h"

namespace veltramoor {

SearchListViewController::SearchListViewController(TableViewStyle)
    : AllListViewController(std::make_unique<SearchListing>(), QStringLiteral("TorrentList.qml")) {
  setTitle(tr("Search"));
  tabBarItem()->set(tr("Search"), QStringLiteral("tabbar-search.png"), 0);
  headerView()->settingsBtn()->setHidden(true);
  headerView()->searchBtn()->setHidden(false);
  setNotice({.text = tr("Type what to look for.")});
  // There is nothing to ask for again yet.
  headerView()->refreshBtn()->setEnabled(false);
  connect(&mySearchBar_, &TextField::shouldReturn, this, [this] {
    // The return key of an empty search bar does nothing.
    if (!mySearchBar_.text().isEmpty()) {
      searchBarSearchButtonClicked();
    }
  });
  setSearchBar(&mySearchBar_);
}

SearchListing& SearchListViewController::searchListing() const {
  return static_cast<SearchListing&>(listing());
}

void SearchListViewController::viewWillAppear() {
  reloadHeaderView();
  if (navigationController() != nullptr) {
    navigationController()->setNavigationBarHidden(true);
  }
  listing().setCurrentPage(0);
  tellOfOtherSettings();
}

void SearchListViewController::viewDidAppear() {
  if (!rows()->torrents() && !isBusy()) {
    mySearchBar_.becomeFirstResponder();
  }
}

bool SearchListViewController::perform(KeyCommand command) {
  if (command != KeyCommand::Search) {
    return AllListViewController::perform(command);
  }
  mySearchBar_.becomeFirstResponder();
  return true;
}

void SearchListViewController::clearRows() {
  rows()->clear();
  listing().setCurrentPage(0);
  rows()->setNoMoreTorrents(true);
  rows()->reload();
}

void SearchListViewController::searchBarSearchButtonClicked() {
  mySearchBar_.resignFirstResponder();
  // The results of an earlier search would stand above those of this one.
  ignorePages();
  clearRows();
  searchListing().search(mySearchBar_.text().toStdString());
  fetchPage(0);
}

void SearchListViewController::didRefresh() {
  clearRows();
  fetchPage(0);
}

void SearchListViewController::didSearch() { didSettings(); }

void SearchListViewController::touchesBegan() { mySearchBar_.resignFirstResponder(); }

bool SearchListViewController::escape() {
  const bool isEditing = mySearchBar_.isEditing();
  mySearchBar_.resignFirstResponder();
  return isEditing;
}

QString SearchListViewController::emptyText() const {
  return searchString()
             ? tr("Nothing found. Try fewer words, or another category.")
             : tr("Nothing found. The site can be asked in unaccented Latin letters only.");
}

std::shared_ptr<ViewController> SearchListViewController::displaySettings() const {
  return SearchDisplaySettingsViewController::sharedInstance();
}

}  // namespace veltramoor
