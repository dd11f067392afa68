#include "support/AtomicFile.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

namespace cindertop {
namespace {

/// How many writers of one file may be at work at once before the next one fails.
constexpr int parallelWriters = 8;
constexpr std::size_t readSize = 1024UZ * 1024;

/// Asks again as long as a signal interrupts.
template <typename Call>
auto uninterrupted(const Call& call) {
    auto result = call();
    while (!result && result.error() == std::errc::interrupted) {
        result = call();
    }
    return result;
}

/// A file that is being written beside the one it will replace. Unless it takes its place, it goes.
class Replacement {
public:
    static FileResult<Replacement> begin(FileSystem& files, const std::filesystem::path& target) {
        auto error = std::errc::device_or_resource_busy;
        for (int writer = 0; writer < parallelWriters; ++writer) {
            const std::filesystem::path name =
                target.parent_path() / ("." + target.filename().string() + ".new" + std::to_string(writer));
            const auto file = uninterrupted([&] { return files.openForReplacing(name); });
            if (file) {
                return Replacement(files, name, *file);
            }
            error = file.error();
            if (error != std::errc::device_or_resource_busy) {
                break;
            }
        }
        return std::unexpected(error);
    }

    Replacement(Replacement&& other) noexcept
        : files_(other.files_),
          name_(std::move(other.name_)),
          file_(std::exchange(other.file_, std::nullopt)) {}

    ~Replacement() {
        if (file_) {
            std::ignore = uninterrupted(
                [&] { return files_.remove(name_); }); // while it is locked: nobody else's file goes
            files_.close(*file_);
        }
    }

    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    Replacement& operator=(Replacement&&) = delete;

    FileResult<void> write(std::string_view bytes) {
        while (!bytes.empty()) {
            const auto count = uninterrupted([&] { return files_.write(*file_, bytes); });
            if (!count) {
                return std::unexpected(count.error());
            }
            if (*count == 0) {
                return std::unexpected(std::errc::io_error);
            }
            bytes.remove_prefix(*count);
        }
        return {};
    }

    FileResult<void> sync() {
        return uninterrupted([&] { return files_.sync(*file_); });
    }

    FileResult<void> takePlaceOf(const std::filesystem::path& target) {
        auto renamed = uninterrupted([&] { return files_.rename(name_, target); });
        if (renamed) {
            files_.close(*std::exchange(file_, std::nullopt));
        }
        return renamed;
    }

private:
    Replacement(FileSystem& files, std::filesystem::path name, FileHandle file)
        : files_(files), name_(std::move(name)), file_(file) {}

    FileSystem& files_;
    std::filesystem::path name_;
    std::optional<FileHandle> file_;
};

/// A file that is open for reading.
class OpenFile {
public:
    OpenFile(FileSystem& files, FileHandle file) : files_(files), file_(file) {}

    ~OpenFile() { files_.close(file_); }

    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    FileResult<std::string> rest(std::size_t limit) {
        std::string text;
        for (;;) {
            const std::size_t size = text.size();
            FileResult<std::size_t> count = 0;
            // Room that is not read into is never touched, so much of it costs nothing.
            text.resize_and_overwrite(size + readSize, [&](char* bytes, std::size_t /*room*/) {
                count = uninterrupted([&] { return files_.read(file_, std::span(bytes + size, readSize)); });
                return size + count.value_or(0);
            });
            if (!count) {
                return std::unexpected(count.error());
            }
            if (text.size() > limit) {
                return std::unexpected(std::errc::file_too_large);
            }
            if (*count == 0) {
                return text;
            }
        }
    }

private:
    FileSystem& files_;
    FileHandle file_;
};

std::filesystem::path folderOf(const std::filesystem::path& file) {
    return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

} // namespace

FileResult<std::string> wholeFile(FileSystem& files, const std::filesystem::path& file, std::size_t limit) {
    const auto opened = uninterrupted([&] { return files.openForReading(file); });
    if (!opened) {
        return std::unexpected(opened.error());
    }
    return OpenFile(files, *opened).rest(limit);
}

FileResult<void> makeFolders(FileSystem& files, const std::filesystem::path& folder) {
    if (folder.empty()) { // the current one
        return {};
    }
    const auto made = uninterrupted([&] { return files.makeFolder(folder); });
    if (made || made.error() == std::errc::file_exists) {
        return {};
    }
    const std::filesystem::path parent = folder.parent_path();
    if (made.error() != std::errc::no_such_file_or_directory || parent.empty() || parent == folder) {
        return made;
    }
    if (const auto parentMade = makeFolders(files, parent); !parentMade) {
        return parentMade;
    }
    auto again = uninterrupted([&] { return files.makeFolder(folder); });
    if (!again && again.error() != std::errc::file_exists) {
        return again;
    }
    return {};
}

FileResult<void> removeFile(FileSystem& files, const std::filesystem::path& file) {
    // What a killed writer left beside it goes as well: it may hold the same.
    std::ignore = Replacement::begin(files, file);
    return uninterrupted([&] { return files.remove(file); });
}

FileResult<void> replaceFile(FileSystem& files, const std::filesystem::path& file,
                             std::span<const std::string_view> pieces, Durability durability) {
    auto replacement = Replacement::begin(files, file);
    if (!replacement) {
        return std::unexpected(replacement.error());
    }
    for (const std::string_view piece : pieces) {
        if (auto written = replacement->write(piece); !written) {
            return written;
        }
    }
    if (durability == Durability::relaxed) {
        return replacement->takePlaceOf(file);
    }
    if (auto synced = replacement->sync(); !synced) {
        return synced;
    }
    if (auto renamed = replacement->takePlaceOf(file); !renamed) {
        return renamed;
    }
    // The new contents stand already; a file system that cannot sync a folder keeps its names by other means.
    std::ignore = files.syncFolder(folderOf(file));
    return {};
}

FileResult<void> replaceFile(FileSystem& files, const std::filesystem::path& file, std::string_view bytes,
                             Durability durability) {
    const std::array pieces{bytes};
    return replaceFile(files, file, pieces, durability);
}

} // namespace cindertop
