#pragma once

#include <cstdlib>

/// What always holds; the fuzzer reports the input where it does not.
inline void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}
