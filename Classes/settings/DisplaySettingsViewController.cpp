#include "settings/DisplaySettingsViewController.h"

#include "lists/listings/SiteCodes.h"
#include "platform/Preferences.h"
#include "toolkit/NavigationController.h"
#include "toolkit/SharedInstances.h"

namespace veltramoor {
namespace {

QString text(std::string_view name) {
  return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

QStringList namesOf(const std::vector<SettingChoice>& choices) {
  QStringList names;
  for (const SettingChoice& choice : choices) {
    names.append(text(choice.name));
  }
  return names;
}

// The segment of the stored code: the first when none is stored, none for a code that is not there.
int storedSegment(const std::vector<SettingChoice>& choices, const std::string& key) {
  const std::string code = Preferences::sharedInstance().string(key).value_or("");
  if (code.empty()) {
    return 0;
  }
  for (std::size_t i = 0; i < choices.size(); ++i) {
    if (choices[i].code == code) {
      return static_cast<int>(i);
    }
  }
  return SegmentedControl::kNoSegment;
}

void store(const std::string& key, std::string_view code) {
  Preferences::sharedInstance().setString(key, code);
  Preferences::sharedInstance().synchronize();
}

const CategoryGroup& groupAt(int row) { return categoryTable()[static_cast<std::size_t>(row)]; }

}  // namespace

DisplaySettingsViewController::DisplaySettingsViewController(DisplaySettingsKeys keys)
    : ViewController(QStringLiteral("DisplaySettings.qml")),
      keys_(std::move(keys)),
      order_(namesOf(orderTable())),
      sort_(namesOf(sortTable())) {
  setTitle(tr("Recents Display Settings"));
  order_.setSelectedSegment(storedSegment(orderTable(), keys_.order));
  sort_.setSelectedSegment(storedSegment(sortTable(), keys_.sort));
  connect(&order_, &SegmentedControl::valueChanged, this,
          &DisplaySettingsViewController::didOrderBy);
  connect(&sort_, &SegmentedControl::valueChanged, this, &DisplaySettingsViewController::didSortBy);
  addParts();
  selectStoredCategory();
}

std::shared_ptr<DisplaySettingsViewController> DisplaySettingsViewController::sharedInstance() {
  return SharedInstances::pointer<DisplaySettingsViewController>();
}

void DisplaySettingsViewController::addParts() {
  infoView_.addLabel(QStringLiteral("orderLabel"), tr("Order by:"), {20, 60, 300, 20});
  infoView_.addSegments(QStringLiteral("orderControl"), tr("Order by"), {20, 90, 280, 30}, &order_);
  infoView_.addLabel(QStringLiteral("sortLabel"), tr("Sort:"), {20, 130, 300, 20});
  infoView_.addSegments(QStringLiteral("sortControl"), tr("Sort"), {20, 160, 280, 30}, &sort_);
  infoView_.addPicker(QStringLiteral("categoryPicker"), tr("Category"), {20, 210, 280, 50});
}

void DisplaySettingsViewController::selectStoredCategory() {
  const std::string code = Preferences::sharedInstance().string(keys_.category).value_or("");
  if (code.empty()) {
    DisplaySettingsViewController::didSelectRow(0, kGroups);
    return;
  }
  for (int group = 0; group < numberOfRows(kGroups); ++group) {
    const auto& choices = groupAt(group).members;
    for (std::size_t member = 0; member < choices.size(); ++member) {
      if (choices[member].code == code) {
        // Straight to the member: a stop at the group would store the group's code for a moment,
        // and a program that ended just then would keep it.
        selectedGroup_ = group;
        DisplaySettingsViewController::didSelectRow(static_cast<int>(member), kMembers);
        return;
      }
    }
  }
}

void DisplaySettingsViewController::viewWillAppear() {
  if (navigationController() != nullptr) {
    navigationController()->setNavigationBarHidden(false);
  }
}

int DisplaySettingsViewController::numberOfRows(int component) const {
  if (component == kGroups) {
    return static_cast<int>(categoryTable().size());
  }
  return selectedGroup_ == kNoRow ? 0 : static_cast<int>(groupAt(selectedGroup_).members.size());
}

double DisplaySettingsViewController::widthForComponent(int component) {
  return component == kGroups ? 160 : 120;
}

void DisplaySettingsViewController::didSelectRow(int row, int component) {
  if (row < 0 || row >= numberOfRows(component)) {
    return;
  }
  if (component == kGroups) {
    const bool sameGroup = row == selectedGroup_;
    selectedGroup_ = row;
    row = 0;
    if (!sameGroup) {
      emit membersChanged();
    }
  }
  selectedMember_ = row;
  store(keys_.category, groupAt(selectedGroup_).members[static_cast<std::size_t>(row)].code);
  emit pickerChanged();
}

void DisplaySettingsViewController::didOrderBy() {
  store(keys_.order, orderTable()[static_cast<std::size_t>(order_.selectedSegment())].code);
}

void DisplaySettingsViewController::didSortBy() {
  store(keys_.sort, sortTable()[static_cast<std::size_t>(sort_.selectedSegment())].code);
}

QStringList DisplaySettingsViewController::groups() const {
  QStringList names;
  for (const CategoryGroup& group : categoryTable()) {
    names.append(text(group.name));
  }
  return names;
}

QStringList DisplaySettingsViewController::members() const {
  return selectedGroup_ == kNoRow ? QStringList() : namesOf(groupAt(selectedGroup_).members);
}

}  // namespace veltramoor
