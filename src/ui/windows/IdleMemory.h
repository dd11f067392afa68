#pragma once

namespace cindertop::ui {

/// Returns memory that is no longer needed after the start or a closed window: what the C library keeps for
/// later, and the pages with code and constants of the program and its libraries. Nothing is lost: such a
/// page comes back from its file, or rather from where the system caches it, when it is needed again. Any
/// thread.
void returnIdleMemory();

} // namespace cindertop::ui
