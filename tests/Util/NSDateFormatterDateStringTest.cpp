#include "Util/NSDateFormatterDateString.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace veltramoor {
namespace {

TEST(DateString, RewritesADateOrAnswersAbsent) {
  struct Case {
    std::string text, source, destination;
    std::optional<std::string> expected;
  };
  const std::vector<Case> cases{
      {"2011-03-05 14:07", "yyyy-MM-dd HH:mm", "dd.MM.yyyy 'at' HH.mm", "05.03.2011 at 14.07"},
      {"03-05 09:30", "MM-dd HH:mm", "d/M H:mm", "5/3 9:30"},
      {"02-29", "MM-dd", "yyyy-MM-dd", "2000-02-29"},
      {"14:07", "HH:mm", "yyyy-MM-dd HH:mm:ss.SSS", "2000-01-01 14:07:00.000"},
      {"2011-03-05", "yyyy-MM-dd", std::string(200, 'y').replace(4, 196, "'\xC3\xA9'"),
       "2011\xC3\xA9"},
      {"not a date", "yyyy-MM-dd", "dd.MM.yyyy", std::nullopt},
      {"2011-03-05 and more", "yyyy-MM-dd", "dd.MM.yyyy", std::nullopt},
      {"2011-02-30", "yyyy-MM-dd", "dd.MM.yyyy", std::nullopt},
      {"", "yyyy-MM-dd", "dd.MM.yyyy", std::nullopt}};
  for (const Case& one : cases) {
    EXPECT_EQ(dateStringFromString(one.text, one.source, one.destination), one.expected)
        << one.text << " as " << one.source;
  }
}

}  // namespace
}  // namespace veltramoor
