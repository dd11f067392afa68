#include "persistence/WriteAllowance.h"

#include <algorithm>
#include <utility>

namespace cindertop {
namespace {

constexpr double bytesASecond = 600;
constexpr double most = 1'000'000; ///< saved up at rest

} // namespace

WriteAllowance::WriteAllowance(MonotonicClock clock) : clock_(std::move(clock)), bytes_(most) {
    if (clock_) {
        latest_ = clock_();
    }
}

bool WriteAllowance::permits() {
    if (!clock_) {
        return true;
    }
    const auto now = clock_();
    const std::chrono::duration<double> passed = now - std::exchange(latest_, now);
    bytes_ = std::min(bytes_ + passed.count() * bytesASecond, most);
    return bytes_ > 0;
}

void WriteAllowance::spend(std::size_t bytes) {
    bytes_ -= static_cast<double>(bytes);
}

} // namespace cindertop
