// The tabs in their order.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "toolkit/ViewController.h"

namespace veltramoor {

/// Makes every tab's screen, most of them in a stack of their own. `logout` is what the last one
/// calls.
[[nodiscard]] std::vector<std::shared_ptr<ViewController>> assembleTabs(
    std::function<void()> logout);

}  // namespace veltramoor
