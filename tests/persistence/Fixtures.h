#pragma once

#include "fakes/TemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace cindertop::tests {

/// A file below the fixtures of this folder, for example "history/good/full.plist".
inline std::filesystem::path fixtureFile(const std::string& name) {
    return std::filesystem::path(CINDERTOP_FIXTURES) / "persistence" / name;
}

inline std::string fixture(const std::string& name) {
    return fakes::textOf(fixtureFile(name));
}

inline std::vector<std::string> fixturesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(fixtureFile(folder))) {
        names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
}

} // namespace cindertop::tests
