#pragma once

#include <string>
#include <string_view>

namespace cindertop {

/// What the environment says about a category of the locale, for example "LC_COLLATE": the first of LC_ALL,
/// the category and LANG that is set and not empty; "C" without any. Changes of the environment are seen.
std::string userLocaleName(const char* category);

/// A POSIX locale name as ICU takes it: "de_DE.UTF-8" is "de_DE". C and POSIX are the root locale, "",
/// because ICU reads them as American English. ICU's own names stay as they are.
std::string icuLocaleName(std::string_view name);

} // namespace cindertop
