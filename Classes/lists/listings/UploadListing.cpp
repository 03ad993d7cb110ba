#include "lists/listings/UploadListing.h"

#include <fmt/format.h>

#include "PreferencesKeys.h"
#include "Util/AbsentValue.h"
#include "site/UserInfo.h"

namespace veltramoor {

UploadListing::UploadListing()
    : Listing({{}, PreferencesKeys::uploadOrderBy, PreferencesKeys::uploadSortBy}) {}

std::optional<Url> UploadListing::pageUrl(int page) const {
  return onSite(fmt::format("/user/{}/{}/{}", formatted(UserInfo::sharedInstance().username()),
                            page, order()));
}

}  // namespace veltramoor
