// An answer with something wrong with it.
#pragma once

#include "demo/SitePages.h"

namespace veltramoor {

/// What `pages` answers to `request` when `fault` strikes.
[[nodiscard]] SiteAnswer spoiltAnswer(const SitePages& pages, const SiteRequest& request,
                                      const Fault& fault);

}  // namespace veltramoor
