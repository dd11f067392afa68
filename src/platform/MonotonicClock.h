#pragma once

#include <chrono>
#include <functional>

namespace cindertop {

/// Time that only goes forward, from an unnamed start: for durations. Any thread may call it.
using MonotonicClock = std::function<std::chrono::nanoseconds()>;

} // namespace cindertop
