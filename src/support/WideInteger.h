#pragma once

namespace cindertop {

/// Holds every sum of a few 64-bit counters, and the product of one with a 32-bit factor, without wrapping.
__extension__ using WideUnsigned = unsigned __int128;

} // namespace cindertop
