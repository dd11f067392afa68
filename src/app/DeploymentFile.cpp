#include "app/DeploymentFile.h"

#include "support/AtomicFile.h"
#include "support/PropertyListText.h"
#include "support/PropertyListValue.h"
#include "support/UserFolders.h"

#include <utility>
#include <variant>

namespace cindertop {

std::filesystem::path DeploymentFile::defaultFile() {
    const auto program = ownProgram();
    const auto prefix = program.empty() ? "/usr" : program.parent_path().parent_path();
    return prefix / "share/cindertop/Info.plist";
}

DeploymentFile::DeploymentFile(FileSystem& files, const std::filesystem::path& file) {
    auto content = wholeFile(files, file, propertyListSizeLimit);
    if (!content) {
        return;
    }
    const auto tree = parsePropertyList(*std::move(content));
    const auto* const dictionary = tree ? std::get_if<PropertyListValue::Dictionary>(&tree->value) : nullptr;
    if (dictionary == nullptr) {
        return;
    }
    for (const auto& [key, value] : *dictionary) {
        if (const auto* const held = std::get_if<std::string>(&value.value)) {
            texts_.emplace(key, *held);
        }
    }
}

std::optional<std::string> DeploymentFile::text(std::string_view key) const {
    const auto found = texts_.find(key);
    return found == texts_.end() ? std::nullopt : std::optional(found->second);
}

} // namespace cindertop
