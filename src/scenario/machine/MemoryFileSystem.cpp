#include "scenario/machine/MemoryFileSystem.h"

#include <algorithm>
#include <utility>

namespace cindertop::simulated {

namespace {

/// "/a/b" for "a/./b/", "/" for "".
std::string rootedPath(const std::filesystem::path& path) {
    const auto normal = (std::filesystem::path("/") / path).lexically_normal();
    return (normal.has_filename() ? normal : normal.parent_path()).string();
}

std::string folderOf(const std::string& path) {
    return std::filesystem::path(path).parent_path().string();
}

} // namespace

std::errc MemoryFileSystem::obstacleTo(const std::string& file) const {
    if (folders_.contains(file)) {
        return std::errc::is_a_directory;
    }
    if (const auto folder = folderOf(file); !folders_.contains(folder)) {
        return files_.contains(folder) ? std::errc::not_a_directory : std::errc::no_such_file_or_directory;
    }
    return {};
}

FileHandle MemoryFileSystem::keep(OpenFile file) {
    const FileHandle handle{++handles_};
    open_.emplace(handle, std::move(file));
    return handle;
}

FileResult<FileHandle> MemoryFileSystem::openForReading(const std::filesystem::path& file) {
    const std::scoped_lock lock(lock_);
    const auto path = rootedPath(file);
    if (const auto obstacle = obstacleTo(path); obstacle != std::errc{}) {
        return std::unexpected(obstacle);
    }
    const auto found = files_.find(path);
    if (found == files_.end()) {
        return std::unexpected(std::errc::no_such_file_or_directory);
    }
    return keep({.contents = found->second, .isWritable = false});
}

FileResult<FileHandle> MemoryFileSystem::openForReplacing(const std::filesystem::path& file) {
    const std::scoped_lock lock(lock_);
    const auto path = rootedPath(file);
    if (const auto obstacle = obstacleTo(path); obstacle != std::errc{}) {
        return std::unexpected(obstacle);
    }
    auto& contents = files_[path];
    if (!contents) {
        contents = std::make_shared<Contents>();
    }
    if (std::exchange(contents->isLocked, true)) {
        return std::unexpected(std::errc::device_or_resource_busy);
    }
    contents->bytes.clear();
    return keep({.contents = contents, .isWritable = true});
}

FileResult<std::size_t> MemoryFileSystem::read(FileHandle file, std::span<char> buffer) {
    const std::scoped_lock lock(lock_);
    const auto found = open_.find(file);
    if (found == open_.end() || found->second.isWritable) {
        return std::unexpected(std::errc::bad_file_descriptor);
    }
    auto& [contents, isWritable, position] = found->second;
    const auto start = std::min(position, contents->bytes.size());
    const auto count = contents->bytes.copy(buffer.data(), buffer.size(), start);
    position = start + count;
    return count;
}

FileResult<std::size_t> MemoryFileSystem::write(FileHandle file, std::string_view bytes) {
    const std::scoped_lock lock(lock_);
    const auto found = open_.find(file);
    if (found == open_.end() || !found->second.isWritable) {
        return std::unexpected(std::errc::bad_file_descriptor);
    }
    found->second.contents->bytes += bytes;
    return bytes.size();
}

FileResult<void> MemoryFileSystem::sync(FileHandle file) {
    const std::scoped_lock lock(lock_);
    if (!open_.contains(file)) {
        return std::unexpected(std::errc::bad_file_descriptor);
    }
    return {};
}

void MemoryFileSystem::close(FileHandle file) {
    const std::scoped_lock lock(lock_);
    const auto closed = open_.extract(file);
    if (closed && closed.mapped().isWritable) {
        closed.mapped().contents->isLocked = false;
    }
}

FileResult<void> MemoryFileSystem::rename(const std::filesystem::path& from,
                                          const std::filesystem::path& to) {
    const std::scoped_lock lock(lock_);
    const auto source = rootedPath(from);
    const auto target = rootedPath(to);
    for (const std::string& path : {source, target}) {
        if (const auto obstacle = obstacleTo(path); obstacle != std::errc{}) {
            return std::unexpected(obstacle);
        }
    }
    auto moved = files_.find(source);
    if (moved == files_.end()) {
        return std::unexpected(std::errc::no_such_file_or_directory);
    }
    if (source != target) {
        files_.insert_or_assign(target, moved->second);
        files_.erase(moved);
    }
    return {};
}

FileResult<void> MemoryFileSystem::remove(const std::filesystem::path& file) {
    const std::scoped_lock lock(lock_);
    const auto path = rootedPath(file);
    if (const auto obstacle = obstacleTo(path); obstacle != std::errc{}) {
        return std::unexpected(obstacle);
    }
    if (files_.erase(path) == 0) {
        return std::unexpected(std::errc::no_such_file_or_directory);
    }
    return {};
}

FileResult<void> MemoryFileSystem::makeFolder(const std::filesystem::path& folder) {
    const std::scoped_lock lock(lock_);
    const auto path = rootedPath(folder);
    if (folders_.contains(path) || files_.contains(path)) {
        return std::unexpected(std::errc::file_exists);
    }
    if (const auto obstacle = obstacleTo(path); obstacle != std::errc{}) {
        return std::unexpected(obstacle);
    }
    folders_.insert(path);
    return {};
}

FileResult<void> MemoryFileSystem::syncFolder(const std::filesystem::path& folder) {
    const std::scoped_lock lock(lock_);
    const auto path = rootedPath(folder);
    if (folders_.contains(path)) {
        return {};
    }
    return std::unexpected(files_.contains(path) ? std::errc::not_a_directory
                                                 : std::errc::no_such_file_or_directory);
}

} // namespace cindertop::simulated
