#include "platform/desktop/SavePlace.h"

#include <QStandardPaths>
#include <system_error>

namespace cindertop::desktop {

namespace {

/// Also what only looks like a file, such as a link to nowhere.
bool isTaken(const std::filesystem::path& file) {
    std::error_code ignored;
    return std::filesystem::exists(std::filesystem::symlink_status(file, ignored));
}

} // namespace

std::filesystem::path freeSavePlace(const std::string& fileName) {
    const std::filesystem::path documents =
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString();
    std::error_code ignored;
    const bool isThere = std::filesystem::is_directory(documents, ignored);
    return freeSavePlace(
        isThere ? documents
                : std::filesystem::path(
                      QStandardPaths::writableLocation(QStandardPaths::HomeLocation).toStdString()),
        fileName);
}

std::filesystem::path freeSavePlace(const std::filesystem::path& folder, const std::string& fileName) {
    const std::filesystem::path name(fileName);
    auto place = folder / name;
    for (int number = 2; isTaken(place); ++number) {
        place = folder / (name.stem().string() + " " + std::to_string(number) + name.extension().string());
    }
    return place;
}

} // namespace cindertop::desktop
