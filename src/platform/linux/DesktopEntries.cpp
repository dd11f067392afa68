#include "platform/linux/DesktopEntries.h"

#include "platform/linux/FileReading.h"
#include "platform/linux/KeyFile.h"
#include "platform/linux/LaunchCommand.h"

#include <algorithm>
#include <ranges>
#include <system_error>
#include <utility>

namespace cindertop::linux_platform {

namespace {

constexpr auto* mainGroup = "Desktop Entry";
constexpr std::string_view suffix = ".desktop";
constexpr std::size_t entrySizeLimit = std::size_t{1}
                                       << 20U; ///< with a hundred translations they reach 100 kB
constexpr int depthLimit = 8;                  ///< folders can link in a circle
constexpr std::chrono::seconds lookInterval{30};

std::optional<KeyFile> parseApplicationEntry(const std::expected<std::string, FileError>& text,
                                             KeyFile::Translations translations) {
    auto entry = text ? KeyFile::parse(*text, translations) : std::nullopt;
    const bool isApplication = entry && entry->text(mainGroup, "Type") == "Application";
    const bool isDeleted = entry && entry->boolean(mainGroup, "Hidden");
    return isApplication || isDeleted ? std::move(entry) : std::nullopt;
}

bool isTerminalEmulator(const KeyFile& entry) {
    const auto categories = ";" + entry.text(mainGroup, "Categories").value_or("") + ";";
    return categories.contains(";TerminalEmulator;");
}

/// "kde/okular.desktop" is "kde-okular"; none for a file of another kind.
std::optional<std::string> identifierOf(const std::filesystem::path& relativeFile) {
    auto name = relativeFile.string();
    if (!name.ends_with(suffix)) {
        return std::nullopt;
    }
    name.resize(name.size() - suffix.size());
    std::ranges::replace(name, '/', '-');
    return name;
}

std::optional<std::filesystem::file_time_type> modificationTime(const std::filesystem::path& folder) {
    std::error_code error;
    const auto time = std::filesystem::last_write_time(folder, error);
    return error ? std::nullopt : std::optional(time);
}

} // namespace

DesktopEntries::DesktopEntries(DesktopEnvironment environment, MonotonicClock clock)
    : environment_(std::move(environment)), clock_(std::move(clock)) {}

std::optional<DesktopEntry> DesktopEntries::withIdentifier(std::string_view identifier) {
    refresh();
    const auto found = entries_.find(identifier);
    if (found == entries_.end() || found->second.isDeleted) {
        return std::nullopt;
    }
    auto& [path, isTerminal, isDeleted, name] = found->second;
    if (!name) {
        const auto text = readTextFile(path, entrySizeLimit);
        const auto entry = describe(found->first, path, text);
        name = entry ? entry->name : found->first;
    }
    return DesktopEntry{.identifier = found->first, .path = path, .name = *name, .isTerminal = isTerminal};
}

std::optional<DesktopEntry> DesktopEntries::inFile(const std::string& path) {
    refresh();
    const auto file = std::filesystem::path(path).lexically_normal();
    const auto installed = identifierBelowFolders(file);
    if (installed && entries_.contains(*installed)) {
        return withIdentifier(*installed);
    }
    // A process named it: it is not trusted.
    return describe(installed.value_or(file.stem().string()), path,
                    readForeignFile("/", path, entrySizeLimit));
}

std::optional<std::string> DesktopEntries::identifierBelowFolders(const std::filesystem::path& file) const {
    for (const auto& folder : environment_.applicationFolders()) {
        const auto relative = file.lexically_relative(folder.lexically_normal());
        if (!relative.empty() && *relative.begin() != "..") {
            return identifierOf(relative);
        }
    }
    return std::nullopt;
}

std::optional<DesktopEntry> DesktopEntries::startingProgram(const std::string& path) {
    refresh();
    const auto found = claimByProgram_.find(path);
    return found != claimByProgram_.end() ? withIdentifier(found->second.identifier) : std::nullopt;
}

std::size_t DesktopEntries::count() {
    refresh();
    return static_cast<std::size_t>(
        std::ranges::count(entries_ | std::views::values, false, &IndexedEntry::isDeleted));
}

std::uint64_t DesktopEntries::generation() {
    refresh();
    return generation_;
}

std::optional<DesktopEntry>
DesktopEntries::describe(const std::string& identifier, const std::string& path,
                         const std::expected<std::string, FileError>& text) const {
    const auto entry = parseApplicationEntry(text, KeyFile::Translations::all);
    if (!entry || entry->boolean(mainGroup, "Hidden")) {
        return std::nullopt;
    }
    const auto name = entry->localizedText(mainGroup, "Name", environment_.languages);
    return DesktopEntry{.identifier = identifier,
                        .path = path,
                        .name = name && !name->empty() ? *name : identifier,
                        .isTerminal = isTerminalEmulator(*entry)};
}

void DesktopEntries::refresh() {
    const auto now = clock_();
    if (lookedAt_ && now - *lookedAt_ < lookInterval) {
        return;
    }
    const bool isFirstTime = !lookedAt_.has_value();
    lookedAt_ = now;
    if (isFirstTime || hasFolderChanged()) {
        readAll();
    }
}

bool DesktopEntries::hasFolderChanged() const {
    return std::ranges::any_of(seenFolders_,
                               [](const auto& seen) { return modificationTime(seen.first) != seen.second; });
}

void DesktopEntries::readAll() {
    seenFolders_.clear();
    entries_.clear();
    claimByProgram_.clear();
    ++generation_;
    for (const auto& folder : environment_.applicationFolders()) {
        readFolder(folder, "", 0);
    }
}

void DesktopEntries::readFolder(const std::filesystem::path& folder, const std::string& prefix, int depth) {
    // The time first: an entry that comes while the folder is read makes it differ.
    seenFolders_.try_emplace(folder, modificationTime(folder));
    const auto names = listFolder(folder);
    if (!names) {
        return;
    }
    for (const auto& name : *names) {
        std::error_code error;
        if (name.ends_with(suffix)) {
            readEntry(folder / name, prefix + name.substr(0, name.size() - suffix.size()));
        } else if (depth < depthLimit && std::filesystem::symlink_status(folder / name, error).type() ==
                                             std::filesystem::file_type::directory) {
            // A link may lead to the root of the file system, or back here.
            readFolder(folder / name, prefix + name + "-", depth + 1);
        }
    }
}

void DesktopEntries::readEntry(const std::filesystem::path& file, const std::string& identifier) {
    if (entries_.contains(identifier)) {
        return;
    }
    const auto entry = parseApplicationEntry(readTextFile(file, entrySizeLimit), KeyFile::Translations::none);
    if (!entry) {
        return;
    }
    const bool isDeleted = entry->boolean(mainGroup, "Hidden");
    entries_.emplace(identifier, IndexedEntry{.path = file.string(),
                                              .isTerminal = isTerminalEmulator(*entry),
                                              .isDeleted = isDeleted,
                                              .name = {}});
    if (isDeleted) {
        return;
    }
    if (const auto exec = entry->text(mainGroup, "Exec")) {
        claimProgram(*exec, {.options = 0,
                             .isHiddenInMenus = entry->boolean(mainGroup, "NoDisplay"),
                             .identifier = identifier});
    }
}

void DesktopEntries::claimProgram(const std::string& exec, Claim claim) {
    const auto command = parseExec(exec);
    const auto program = command ? environment_.resolvedProgram(command->program) : std::nullopt;
    if (!program || isLauncher(program->native())) { // a link may lead to an interpreter
        return;
    }
    claim.options = command->options;
    const auto [place, isNew] = claimByProgram_.try_emplace(program->string(), claim);
    if (!isNew && claim < place->second) {
        place->second = std::move(claim);
    }
}

} // namespace cindertop::linux_platform
