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

/// False when it was refused and the old code stands.
bool store(const std::string& key, std::string_view code) {
  const bool stored = Preferences::sharedInstance().setString(key, code);
  Preferences::sharedInstance().synchronize();
  return stored;
}

const CategoryGroup& groupAt(int row) { return categoryTable()[static_cast<std::size_t>(row)]; }

}  // namespace

DisplaySettingsViewController::DisplaySettingsViewController(DisplaySettingsKeys keys)
    : ViewController(QStringLiteral("DisplaySettings.qml")),
      keys_(std::move(keys)),
      order_(namesOf(orderTable())),
      sort_(namesOf(sortTable())) {
  setTitle(tr("Recents Display Settings"));
  showStoredOrder();
  connect(&order_, &SegmentedControl::valueChanged, this,
          &DisplaySettingsViewController::didOrderBy);
  connect(&sort_, &SegmentedControl::valueChanged, this, &DisplaySettingsViewController::didSortBy);
  addParts();
  selectStoredCategory();
}

std::shared_ptr<DisplaySettingsViewController> DisplaySettingsViewController::sharedInstance() {
  return SharedInstances::pointer<DisplaySettingsViewController>();
}

void DisplaySettingsViewController::showStoredOrder() {
  order_.setSelectedSegment(storedSegment(orderTable(), keys_.order));
  sort_.setSelectedSegment(storedSegment(sortTable(), keys_.sort));
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
  const int groupBefore = selectedGroup_;
  const int memberBefore = selectedMember_;
  show(component == kGroups ? row : selectedGroup_, component == kGroups ? 0 : row);
  const auto& members = groupAt(selectedGroup_).members;
  if (!store(keys_.category, members[static_cast<std::size_t>(selectedMember_)].code)) {
    // The wheels, which have turned already, turn back.
    show(groupBefore, memberBefore);
  }
}

void DisplaySettingsViewController::show(int group, int member) {
  const bool sameGroup = group == selectedGroup_;
  selectedGroup_ = group;
  if (!sameGroup) {
    emit membersChanged();
  }
  selectedMember_ = member;
  emit pickerChanged();
}

void DisplaySettingsViewController::didOrderBy() {
  if (!store(keys_.order, orderTable()[static_cast<std::size_t>(order_.selectedSegment())].code)) {
    order_.setSelectedSegment(storedSegment(orderTable(), keys_.order));
  }
}

void DisplaySettingsViewController::didSortBy() {
  if (!store(keys_.sort, sortTable()[static_cast<std::size_t>(sort_.selectedSegment())].code)) {
    sort_.setSelectedSegment(storedSegment(sortTable(), keys_.sort));
  }
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
