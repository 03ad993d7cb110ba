// libcurl's process-wide initialisation.
#pragma once

namespace veltramoor {

/// Call before the first easy, multi or share handle; cheap and thread-safe when called again.
void initialiseCurl();

}  // namespace veltramoor
