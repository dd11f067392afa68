#pragma once

#include <string>
#include <string_view>

namespace cindertop::simulated {

/// Whether it is an IANA name of a time zone, such as "Asia/Kolkata".
bool isTimeZoneName(const std::string& name);

/// Whether it has the form of a locale's name: a language, then parts behind "_" or "-", such as "en_GB".
bool isLocaleName(std::string_view name);

} // namespace cindertop::simulated
