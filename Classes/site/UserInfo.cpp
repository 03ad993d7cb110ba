#include "site/UserInfo.h"

namespace veltramoor {

UserInfo& UserInfo::sharedInstance() {
  static UserInfo instance;
  return instance;
}

UserInfo::Field UserInfo::read(const Field& field) const {
  const std::lock_guard lock(mutex_);
  return field;
}

void UserInfo::write(Field& field, Field value) {
  const std::lock_guard lock(mutex_);
  field = std::move(value);
}

}  // namespace veltramoor
