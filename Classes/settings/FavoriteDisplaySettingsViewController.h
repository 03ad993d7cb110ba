// The favourites' choices.
#pragma once

#include <memory>

#include "settings/DisplaySettingsViewController.h"

namespace veltramoor {

/// The category, and how many pages of it the filters are applied to at once (5 to 50, as a whole
/// number in decimal digits). The count is stored when the slider is let go, not while it moves.
class FavoriteDisplaySettingsViewController : public veltramoor::DisplaySettingsViewController {
  Q_OBJECT

 public:
  FavoriteDisplaySettingsViewController();

  static std::shared_ptr<FavoriteDisplaySettingsViewController> sharedInstance();

  [[nodiscard]] QString explanation() const override;
  /// The label with the count on show.
  [[nodiscard]] DisplaySettingsPart* favoritesCountValue() const { return favoritesCountValue_; }
  [[nodiscard]] Slider* favoritesCountSlider() { return &favoritesCountSlider_; }

 private:
  void movedFavoritesSlider();
  void changedFavoritesSlider();

  Slider favoritesCountSlider_{5, 50};
  DisplaySettingsPart* favoritesCountValue_ = nullptr;
};

}  // namespace veltramoor
