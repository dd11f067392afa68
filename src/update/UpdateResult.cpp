#include "update/UpdateResult.h"

#include <string>
#include <utility>
#include <variant>

namespace cindertop {

namespace {

struct Notice {
    std::string title;
    std::string body;
};

Notice wording(const Release& release) {
    const auto& page = release.page;
    return {"Cindertop " + release.version + " is available",
            release.summary.empty() ? page : release.summary + '\n' + page};
}

Notice wording(const UpToDate& /*none*/) {
    return {"Cindertop is up to date", "There is no newer release."};
}

Notice wording(const UpdateFailure& failure) {
    return {"Looking for updates failed", failure.sentence};
}

} // namespace

UserNotificationRequest updateNotice(const UpdateResult& result) {
    auto [title, body] = std::visit([](const auto& found) { return wording(found); }, result);
    return {.identifier = "cindertop.updates",
            .content = {.title = std::move(title),
                        .body = std::move(body),
                        .threadIdentifier = "cindertop.updates",
                        .categoryIdentifier = "updates",
                        .sound = std::nullopt,
                        .badge = std::nullopt},
            .delay = std::nullopt};
}

} // namespace cindertop
