#pragma once

#include <filesystem>
#include <string>

namespace cindertop::desktop {

/// A place for a new file where nobody can be asked: the user's documents, else the home folder, under the
/// name given or, where that is taken, with a number before its extension.
std::filesystem::path freeSavePlace(const std::string& fileName);

/// The same in a given folder.
std::filesystem::path freeSavePlace(const std::filesystem::path& folder, const std::string& fileName);

} // namespace cindertop::desktop
