#pragma once

#include <string_view>

namespace cindertop::cli {

/// What "--help" prints.
std::string_view helpText();

} // namespace cindertop::cli
