// Where what was built is.
#pragma once

#include <string>

namespace veltramoor::test {

/// Path of a program that was built together with the tests.
[[nodiscard]] std::string program(const std::string& name);

}  // namespace veltramoor::test
