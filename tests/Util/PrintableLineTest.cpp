#include "Util/PrintableLine.h"

#include <gtest/gtest.h>

namespace veltramoor {
namespace {

TEST(PrintableLineTest, IsOneLineThatSteersNoTerminal) {
  for (const auto& [text, line] : {
           std::pair("Couldn't connect", "Couldn't connect"),
           std::pair("  a  b\r\n\r\n", "a  b"),
           std::pair("a\r\nb\t c", "a b c"),
           std::pair("\x1b[31mred\x7f", "[31mred"),
           std::pair("Größe\xc2\x9b"
                     "2J",
                     "Größe 2J"),
           std::pair("Gr\xf6\xc2", "Gr??"),
           std::pair("\n", ""),
       }) {
    EXPECT_EQ(printableLine(text), line);
  }
}

}  // namespace
}  // namespace veltramoor
