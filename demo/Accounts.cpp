#include "demo/Accounts.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "demo/Random.h"

namespace veltramoor {
namespace {

constexpr std::array<DemoAccount, 3> kAccounts{{{"demo", "demo", "1001", "member"},
                                                {"anna", "p&=%+é word", "2002", "trusted member"},
                                                {"mods", "moderate", "7", "moderator"}}};

}  // namespace

const DemoAccount* Accounts::withPassword(std::string_view name, std::string_view password) {
  const auto* found = std::ranges::find(kAccounts, name, &DemoAccount::name);
  return found != kAccounts.end() && found->password == password ? found : nullptr;
}

const DemoAccount* Accounts::withSession(std::string_view session) const {
  const auto* found = std::ranges::find_if(kAccounts, [&](const DemoAccount& account) {
    return !session.empty() && sessionOf(account) == session;
  });
  return found == kAccounts.end() ? nullptr : found;
}

std::string Accounts::sessionOf(const DemoAccount& account) const {
  std::uint64_t mixed = seed_ + generation_.load() * 0x10001;
  for (const char c : account.uid) {
    mixed = Random(mixed ^ static_cast<unsigned char>(c)).next();
  }
  Random random(mixed);
  const std::uint64_t first = random.next();
  return fmt::format("{:016x}{:016x}", first, random.next());
}

}  // namespace veltramoor
