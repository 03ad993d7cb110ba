// Which category a list shows and in which order.
#pragma once

#include <QStringList>
#include <string>

#include "toolkit/SegmentedControl.h"
#include "toolkit/ViewController.h"

namespace veltramoor {

/// The preference keys of one list's choices.
struct DisplaySettingsKeys {
  std::string category;
  std::string order;
  std::string sort;
};

/// A two-wheel picker of category groups and their members, and two segmented controls. Every
/// choice is stored at once as the site's own code; there is nothing to save. Opening the screen
/// for the first time stores the category "0" when none is stored, and neither order nor sort. Main
/// thread only.
class DisplaySettingsViewController : public veltramoor::ViewController {
  Q_OBJECT
  Q_PROPERTY(veltramoor::SegmentedControl* order READ order CONSTANT)
  Q_PROPERTY(veltramoor::SegmentedControl* sort READ sort CONSTANT)
  Q_PROPERTY(QStringList groups READ groups CONSTANT)
  Q_PROPERTY(QStringList members READ members NOTIFY pickerChanged)
  Q_PROPERTY(int selectedGroup READ selectedGroup NOTIFY pickerChanged)
  Q_PROPERTY(int selectedMember READ selectedMember NOTIFY pickerChanged)

 public:
  static constexpr int kGroups = 0;
  static constexpr int kMembers = 1;

  DisplaySettingsViewController(const QString& title, DisplaySettingsKeys keys);

  void viewWillAppear() override;

  [[nodiscard]] int numberOfRows(int component) const;
  /// The wheel `component` came to rest on `row`. A group selects its first member.
  Q_INVOKABLE virtual void didSelectRow(int row, int component);

  [[nodiscard]] SegmentedControl* order() { return &order_; }
  [[nodiscard]] SegmentedControl* sort() { return &sort_; }
  [[nodiscard]] QStringList groups() const;
  /// Names of the selected group's members.
  [[nodiscard]] QStringList members() const;
  [[nodiscard]] int selectedGroup() const { return selectedGroup_; }
  [[nodiscard]] int selectedMember() const { return selectedMember_; }

 signals:
  void pickerChanged();

 private:
  void didOrderBy();
  void didSortBy();
  void selectStoredCategory();

  DisplaySettingsKeys keys_;
  SegmentedControl order_;
  SegmentedControl sort_;
  int selectedGroup_ = 0;
  int selectedMember_ = 0;
};

}  // namespace veltramoor
