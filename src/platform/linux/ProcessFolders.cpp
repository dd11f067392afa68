#include "platform/linux/ProcessFolders.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstring>
#include <functional>
#include <system_error>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cindertop::linux_platform {

namespace {

constexpr std::size_t listingSize = 32768; ///< about 1,300 processes in one system call

/// "PID/FILE" or "PID", below /proc.
class RelativePath {
public:
    explicit RelativePath(std::int32_t processIdentifier, std::string_view file = {}) {
        auto* const last = bytes_.data() + bytes_.size() - 1;
        auto* const end = std::to_chars(bytes_.data(), last, processIdentifier).ptr;
        if (!file.empty()) {
            *end = '/';
            file.copy(end + 1, static_cast<std::size_t>(last - end) - 1);
        }
    }

    const char* text() const { return bytes_.data(); }

private:
    std::array<char, 32> bytes_{};
};

/// The number that a name is; none for "self", "007" and all else.
std::optional<std::int32_t> numberOfName(const char* name, bool hasZero) {
    if (hasZero && std::string_view(name) == "0") {
        return 0;
    }
    if (*name < '1' || *name > '9') {
        return std::nullopt;
    }
    std::int32_t identifier = 0;
    const auto* const end = name + std::strlen(name);
    const auto [stop, error] = std::from_chars(name, end, identifier);
    return error == std::errc{} && stop == end ? std::optional(identifier) : std::nullopt;
}

std::string withoutDeletedMark(std::string_view target) {
    constexpr std::string_view mark = " (deleted)";
    if (target.ends_with(mark)) {
        target.remove_suffix(mark.size());
    }
    return std::string(target);
}

} // namespace

ProcessFolders::ProcessFolders(std::filesystem::path proc) : proc_(std::move(proc)) {}

std::expected<std::span<const std::int32_t>, FileError> ProcessFolders::list() {
    identifiers_.clear();
    if (!open() || ::lseek(folder_.number(), 0, SEEK_SET) != 0 ||
        !readNumbers(folder_, identifiers_, false)) {
        return std::unexpected(fileErrorOf(errno));
    }
    // /proc ascends by itself.
    if (!std::ranges::is_sorted(identifiers_)) {
        std::ranges::sort(identifiers_);
    }
    return identifiers_;
}

bool ProcessFolders::open() {
    if (!folder_.isOpen()) {
        folder_ = FileDescriptor(::open(proc_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    }
    return folder_.isOpen();
}

bool ProcessFolders::readNumbers(const FileDescriptor& folder, std::vector<std::int32_t>& numbers,
                                 bool hasZero) {
    listing_.resize(listingSize);
    for (;;) {
        const auto count = ::getdents64(folder.number(), listing_.data(), listing_.size());
        if (count <= 0) {
            return count == 0;
        }
        for (std::size_t offset = 0; offset < static_cast<std::size_t>(count);) {
            const auto* const entry = reinterpret_cast<const dirent64*>(listing_.data() + offset);
            if (const auto number = numberOfName(entry->d_name, hasZero)) {
                numbers.push_back(*number);
            }
            offset += entry->d_reclen;
        }
    }
}

std::optional<std::string_view> ProcessFolders::text(std::int32_t processIdentifier, std::string_view file) {
    if (!open()) {
        return std::nullopt;
    }
    const FileDescriptor opened(::openat(folder_.number(), RelativePath(processIdentifier, file).text(),
                                         O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!opened.isOpen()) {
        return std::nullopt;
    }
    const auto count = ::read(opened.number(), text_.data(), text_.size());
    if (count < 0) {
        return std::nullopt;
    }
    return std::string_view(text_.data(), static_cast<std::size_t>(count));
}

std::optional<std::uint32_t> ProcessFolders::owner(std::int32_t processIdentifier) {
    if (!open()) {
        return std::nullopt;
    }
    struct stat status{};
    if (::fstatat(folder_.number(), RelativePath(processIdentifier).text(), &status, AT_SYMLINK_NOFOLLOW) !=
        0) {
        return std::nullopt;
    }
    return status.st_uid;
}

std::optional<std::string> ProcessFolders::executable(std::int32_t processIdentifier) {
    if (!open()) {
        return std::nullopt;
    }
    std::array<char, PATH_MAX> target; // NOLINT(cppcoreguidelines-pro-type-member-init): readlinkat fills it
    const auto count = ::readlinkat(folder_.number(), RelativePath(processIdentifier, "exe").text(),
                                    target.data(), target.size());
    if (count < 1) {
        return std::nullopt;
    }
    return withoutDeletedMark({target.data(), static_cast<std::size_t>(count)});
}

std::span<const std::int32_t> ProcessFolders::descriptors(std::int32_t processIdentifier,
                                                          std::string_view pathPrefix) {
    descriptors_.clear();
    if (!open()) {
        return descriptors_;
    }
    const FileDescriptor folder(::openat(folder_.number(), RelativePath(processIdentifier, "fd").text(),
                                         O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.isOpen() || !readNumbers(folder, descriptors_, true)) {
        return descriptors_;
    }
    // Devices are opened early; a server may hold very many sockets behind them.
    constexpr std::size_t mostDescriptors = 4096;
    std::ranges::sort(descriptors_);
    descriptors_.resize(std::min(descriptors_.size(), mostDescriptors));
    std::erase_if(descriptors_, [&](std::int32_t number) {
        std::array<char, 256> target; // NOLINT(cppcoreguidelines-pro-type-member-init): readlinkat fills it
        const auto count =
            ::readlinkat(folder.number(), std::to_string(number).c_str(), target.data(), target.size());
        return count < 1 ||
               !std::string_view(target.data(), static_cast<std::size_t>(count)).starts_with(pathPrefix);
    });
    return descriptors_;
}

} // namespace cindertop::linux_platform
