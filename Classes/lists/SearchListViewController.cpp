#include "lists/SearchListViewController.h"

#include <fmt/format.h>

#include "PreferencesKeys.h"
#include "Util/AbsentValue.h"
#include "Util/NSStringEscaping.h"
#include "lists/SortedOrder.h"
#include "platform/SiteConfiguration.h"
#include "settings/SearchDisplaySettingsViewController.h"
#include "toolkit/NavigationController.h"

namespace veltramoor {

SearchListViewController::SearchListViewController(TableViewStyle style)
    : AllListViewController(style) {
  setTitle(tr("Search"));
  tabBarItem()->set(tr("Search"), QStringLiteral("tabbar-search.png"), 0);
  headerView()->settingsBtn()->setHidden(true);
  headerView()->searchBtn()->setHidden(false);
  setNotice(tr("Type what to look for."));
  connect(&mySearchBar_, &TextField::shouldReturn, this, [this] {
    // The return key of an empty search bar does nothing.
    if (!mySearchBar_.text().isEmpty()) {
      searchBarSearchButtonClicked();
    }
  });
  setSearchBar(&mySearchBar_);
}

void SearchListViewController::viewWillAppear() {
  reloadHeaderView();
  if (navigationController() != nullptr) {
    navigationController()->setNavigationBarHidden(true);
  }
  setCurrentPage(0);
}

void SearchListViewController::clearRows() {
  rows()->clear();
  setCurrentPage(0);
  rows()->setNoMoreTorrents(true);
  rows()->reload();
}

void SearchListViewController::searchBarSearchButtonClicked() {
  mySearchBar_.resignFirstResponder();
  // The results of an earlier search would stand above those of this one.
  ignorePages();
  clearRows();
  searchString_ = stringByAddingPercentEscapesInAscii(mySearchBar_.text().toStdString());
  fetchPage(0);
}

void SearchListViewController::didRefresh() {
  clearRows();
  fetchPage(0);
}

void SearchListViewController::didSearch() { didSettings(); }

void SearchListViewController::touchesBegan() { mySearchBar_.resignFirstResponder(); }

std::optional<Url> SearchListViewController::pageUrl(int page) {
  const std::string category = setting(PreferencesKeys::searchCategory).value_or("");
  const std::string order =
      sortedOrder(setting(PreferencesKeys::searchOrderBy), setting(PreferencesKeys::searchSortBy));
  return Url::parse(fmt::format("http://{}/search/{}/{}/{}/{}",
                                SiteConfiguration::current().siteHost, formatted(searchString_),
                                page, order, category.empty() ? "0" : category));
}

QString SearchListViewController::emptyText() const {
  return searchString_
             ? tr("Nothing found. Try fewer words, or another category.")
             : tr("Nothing found. The site can be asked in unaccented Latin letters only.");
}

std::shared_ptr<ViewController> SearchListViewController::displaySettings() const {
  return SearchDisplaySettingsViewController::sharedInstance();
}

}  // namespace veltramoor
