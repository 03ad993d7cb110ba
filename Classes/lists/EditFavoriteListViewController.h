// The list of favourite filters.
#pragma once

#include <QRectF>
#include <string>
#include <vector>

#include "lists/AllListViewController.h"
#include "lists/FavoriteComposeViewController.h"
#include "lists/FavoriteFiltersModel.h"
#include "lists/RemovalOffer.h"
#include "toolkit/ViewController.h"

namespace veltramoor {

/// Adds and deletes filters; a filter is changed by deleting it and adding another. Each change is
/// stored at once. Main thread only.
class EditFavoriteListViewController : public veltramoor::ViewController,
                                       public FavoriteComposeViewControllerDelegate {
  Q_OBJECT
  Q_PROPERTY(veltramoor::FavoriteFiltersModel* filters READ filters CONSTANT)
  Q_PROPERTY(veltramoor::RemovalOffer* removal READ removal CONSTANT)

 public:
  enum class EditingStyle { None, Delete, Insert };
  Q_ENUM(EditingStyle)

  /// `names`: torrents that a new filter is tried on while it is typed.
  explicit EditFavoriteListViewController(TableViewStyle style,
                                          std::vector<std::string> names = {});

  void viewDidLoad() override;
  /// Without filters the compose form opens at once.
  void viewWillAppear() override;
  /// Ends the offer to undo.
  void viewWillDisappear() override;

  void reloadFilters();
  Q_INVOKABLE void addFavorite();
  /// Stores `item` as it is, even when it is empty, a duplicate or no valid expression.
  void didUpdateList(FavoriteComposeViewController* form, const std::string& item) override;
  void didCancelUpdateList(FavoriteComposeViewController* form) override;
  /// Removes the filter at `row`; other styles do nothing.
  Q_INVOKABLE void commitEditingStyle(
      veltramoor::EditFavoriteListViewController::EditingStyle style, int row);
  /// Opens the menu of row `row` beside that part of the window.
  Q_INVOKABLE void openMenu(int row, const QRectF& beside, bool byKey);

  [[nodiscard]] FavoriteFiltersModel* filters() { return &filters_; }
  /// Stands after a deletion.
  [[nodiscard]] RemovalOffer* removal() { return &removal_; }

 signals:
  /// The menu's "Delete" of row `row`.
  void deleteChosen(int row);

 private:
  FavoriteFiltersModel filters_;
  RemovalOffer removal_;
  std::vector<std::string> names_;
};

}  // namespace veltramoor
