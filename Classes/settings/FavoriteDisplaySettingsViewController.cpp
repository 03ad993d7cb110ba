#include "settings/FavoriteDisplaySettingsViewController.h"

#include "platform/Preferences.h"
#include "toolkit/SharedInstances.h"

namespace veltramoor {
namespace {

QString storedCount() {
  const std::string stored =
      Preferences::sharedInstance().string(PreferencesKeys::favoritesCount).value_or("");
  return stored.empty() ? QStringLiteral("5") : QString::fromStdString(stored);
}

QString wholeNumber(double value) { return QString::asprintf("%.0f", value); }

}  // namespace

FavoriteDisplaySettingsViewController::FavoriteDisplaySettingsViewController()
    : DisplaySettingsViewController({.category = std::string(PreferencesKeys::favoriteCategory)}) {
  setTitle(tr("Favorites Display Settings"));
  for (int i = OrderLabel; i <= SortControl; ++i) {
    infoView()->remove(0);
  }
  const QString purpose = tr("Number of pages to filter at once:");
  infoView()->addLabel(QStringLiteral("favoritesCountLabel"), purpose, {20, 420, 250, 20});
  favoritesCountValue_ = infoView()->addLabel(QStringLiteral("favoritesCountValue"), storedCount(),
                                              {270, 420, 30, 20});
  infoView()->addSlider(QStringLiteral("favoritesCountSlider"), purpose, {20, 440, 280, 44},
                        &favoritesCountSlider_);
  favoritesCountSlider_.setValue(storedCount().toDouble());
  connect(&favoritesCountSlider_, &Slider::moved, this,
          &FavoriteDisplaySettingsViewController::movedFavoritesSlider);
  connect(&favoritesCountSlider_, &Slider::released, this,
          &FavoriteDisplaySettingsViewController::changedFavoritesSlider);
}

std::shared_ptr<FavoriteDisplaySettingsViewController>
FavoriteDisplaySettingsViewController::sharedInstance() {
  return SharedInstances::pointer<FavoriteDisplaySettingsViewController>();
}

QString FavoriteDisplaySettingsViewController::explanation() const {
  return tr(
      "The newest pages of this category are fetched together, and of their torrents those are "
      "shown that one of your filters accepts.\n\nMore pages find more, and take longer.");
}

void FavoriteDisplaySettingsViewController::movedFavoritesSlider() {
  favoritesCountValue_->setText(wholeNumber(favoritesCountSlider_.value()));
}

void FavoriteDisplaySettingsViewController::changedFavoritesSlider() {
  const QString count = wholeNumber(favoritesCountSlider_.value());
  if (!Preferences::sharedInstance().setString(PreferencesKeys::favoritesCount,
                                               count.toStdString())) {
    favoritesCountSlider_.setValue(storedCount().toDouble());
    favoritesCountValue_->setText(storedCount());
  }
  Preferences::sharedInstance().synchronize();
}

}  // namespace veltramoor
