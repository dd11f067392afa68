#include "cpu/EnclosingApplication.h"

#include "support/Text.h"

#include <algorithm>
#include <memory>

namespace cindertop {

namespace {

bool isApplicationName(std::string_view component) {
    return lowerCased(component).ends_with(".app");
}

bool isDropped(std::string_view component) {
    return component.empty() || component == "." || component == "..";
}

/// The last component without its extension; a name that only starts with a dot has none.
std::string nameOfFolder(std::string_view folder) {
    const std::size_t slash = folder.rfind('/');
    const std::string_view name = slash == std::string_view::npos ? folder : folder.substr(slash + 1);
    const std::size_t dot = name.rfind('.');
    return std::string(dot == 0 ? name : name.substr(0, dot));
}

std::string displayName(const ApplicationBundle& bundle, std::string_view folder) {
    if (auto name = bundle.informationText("CFBundleDisplayName")) {
        return *std::move(name);
    }
    if (auto name = bundle.informationText("CFBundleName")) {
        return *std::move(name);
    }
    return nameOfFolder(folder);
}

} // namespace

std::optional<std::string> outermostApplicationFolder(std::string_view executablePath) {
    std::string folder = executablePath.starts_with('/') ? "/" : "";
    for (std::string_view rest = executablePath; !rest.empty();) {
        const std::string_view component = rest.substr(0, rest.find('/'));
        rest.remove_prefix(std::min(component.size() + 1, rest.size()));
        if (isDropped(component)) {
            continue;
        }
        if (!folder.empty() && !folder.ends_with('/')) {
            folder += '/';
        }
        folder += component;
        if (isApplicationName(component)) {
            return folder;
        }
    }
    return std::nullopt;
}

std::optional<EnclosingApplication> enclosingApplication(std::string_view executablePath,
                                                         ApplicationCatalog& catalog) {
    auto folder = outermostApplicationFolder(executablePath);
    if (!folder) {
        return std::nullopt;
    }
    const std::unique_ptr<ApplicationBundle> bundle = catalog.openBundle(*folder);
    if (!bundle) {
        return std::nullopt;
    }
    std::string name = displayName(*bundle, *folder);
    return EnclosingApplication{*std::move(folder), bundle->bundleIdentifier(), std::move(name)};
}

} // namespace cindertop
