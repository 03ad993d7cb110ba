// What the site finds for a query.
#pragma once

#include <optional>
#include <string>

#include "lists/AllListViewController.h"
#include "lists/listings/SearchListing.h"

namespace veltramoor {

/// Loads nothing until something is searched for, and keeps its results between appearances. Main
/// thread only.
class SearchListViewController : public veltramoor::AllListViewController {
  Q_OBJECT

 public:
  explicit SearchListViewController(TableViewStyle style);

  /// Fetches nothing. The page counter starts anew, so that "load more" asks for page 1 again.
  void viewWillAppear() override;
  /// What is typed goes to a search that has not begun.
  void viewDidAppear() override;
  bool perform(KeyCommand command) override;
  /// Asks again for the query of the latest search, whatever the bar holds.
  void didRefresh() override;
  void didSearch() override;
  /// Gives up the keyboard.
  void touchesBegan() override;
  bool escape() override;
  /// Searches for the bar's text; a page of an earlier search that is still under way is ignored.
  void searchBarSearchButtonClicked();

  /// The query as it is asked for; see `SearchListing`.
  [[nodiscard]] const std::optional<std::string>& searchString() const {
    return searchListing().searchString();
  }

 protected:
  [[nodiscard]] QString loadingText() const override { return tr("Searching..."); }
  [[nodiscard]] QString emptyText() const override;
  [[nodiscard]] std::shared_ptr<ViewController> displaySettings() const override;

 private:
  [[nodiscard]] SearchListing& searchListing() const;
  void clearRows();

  TextField mySearchBar_;
};

}  // namespace veltramoor
