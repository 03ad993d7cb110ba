// Which category a list shows and in which order.
#pragma once

#include <QStringList>
#include <memory>
#include <string>

#include "PreferencesKeys.h"
#include "settings/DisplaySettingsParts.h"
#include "toolkit/SegmentedControl.h"
#include "toolkit/ViewController.h"

namespace veltramoor {

/// The preference keys of one list's choices; those that a list does not name are the screen's own.
struct DisplaySettingsKeys {
  std::string category{PreferencesKeys::category};
  std::string order{PreferencesKeys::orderBy};
  std::string sort{PreferencesKeys::sortBy};
};

/// A two-wheel picker of category groups and their members, and two segmented controls. Every
/// choice is stored at once as the site's own code; there is nothing to save. A choice that the
/// store refuses is taken back. Opening the screen for the first time stores the category "0" when
/// none is stored, and neither order nor sort. A stored code that is not in the tables selects
/// nothing and stays. Main thread only.
///
/// A list's own screen is a subclass with its keys and title, and without the parts that make no
/// sense for the list.
class DisplaySettingsViewController : public veltramoor::ViewController {
  Q_OBJECT
  Q_PROPERTY(veltramoor::SegmentedControl* order READ order CONSTANT)
  Q_PROPERTY(veltramoor::SegmentedControl* sort READ sort CONSTANT)
  Q_PROPERTY(veltramoor::DisplaySettingsParts* infoView READ infoView CONSTANT)
  Q_PROPERTY(QString explanation READ explanation CONSTANT)
  Q_PROPERTY(QString remark READ remark NOTIFY pickerChanged)
  Q_PROPERTY(QStringList groups READ groups CONSTANT)
  Q_PROPERTY(QStringList members READ members NOTIFY membersChanged)
  Q_PROPERTY(int selectedGroup READ selectedGroup NOTIFY pickerChanged)
  Q_PROPERTY(int selectedMember READ selectedMember NOTIFY pickerChanged)

 public:
  static constexpr int kGroups = 0;
  static constexpr int kMembers = 1;
  /// `selectedGroup` and `selectedMember` while nothing is selected.
  static constexpr int kNoRow = -1;
  /// Positions of the parts of `infoView`.
  enum Position { OrderLabel, OrderControl, SortLabel, SortControl, CategoryPicker };

  explicit DisplaySettingsViewController(DisplaySettingsKeys keys = {});

  /// The screen of a list without settings of its own. Made on first use and kept; shows the stored
  /// choices of that moment and the person's since then. So do the subclasses' own.
  static std::shared_ptr<DisplaySettingsViewController> sharedInstance();

  void viewWillAppear() override;

  [[nodiscard]] const DisplaySettingsKeys& keys() const { return keys_; }
  /// Labels and controls in the order of `Position`, as far as a subclass has left them there.
  [[nodiscard]] DisplaySettingsParts* infoView() { return &infoView_; }

  /// Rows of the wheel `component`; the members are those of the selected group.
  [[nodiscard]] int numberOfRows(int component) const;
  /// Width of a wheel in points on a screen 320 points wide.
  Q_INVOKABLE [[nodiscard]] static double widthForComponent(int component);
  /// The wheel `component` came to rest on `row`. A group selects its first member.
  Q_INVOKABLE virtual void didSelectRow(int row, int component);

  /// What the choices are for, on a screen that says so in place of order and sort; else "".
  [[nodiscard]] virtual QString explanation() const { return {}; }
  /// What the chosen category means for order and sort, in one line below them; else "".
  [[nodiscard]] virtual QString remark() const { return {}; }

  [[nodiscard]] SegmentedControl* order() { return &order_; }
  [[nodiscard]] SegmentedControl* sort() { return &sort_; }
  [[nodiscard]] QStringList groups() const;
  /// Names of the selected group's members; none without a selected group.
  [[nodiscard]] QStringList members() const;
  [[nodiscard]] int selectedGroup() const { return selectedGroup_; }
  [[nodiscard]] int selectedMember() const { return selectedMember_; }

 signals:
  void pickerChanged();
  void membersChanged();

 protected:
  /// Has order and sort show what is stored.
  void showStoredOrder();

 private:
  void addParts();
  void didOrderBy();
  void didSortBy();
  void selectStoredCategory();
  void show(int group, int member);

  DisplaySettingsKeys keys_;
  SegmentedControl order_;
  SegmentedControl sort_;
  DisplaySettingsParts infoView_;
  int selectedGroup_ = kNoRow;
  int selectedMember_ = kNoRow;
};

}  // namespace veltramoor
