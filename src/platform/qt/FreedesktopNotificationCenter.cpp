#include "platform/qt/FreedesktopNotificationCenter.h"

#include "platform/qt/NotificationMessage.h"

#include <QMetaType>
#include <QStringList>
#include <utility>
#include <variant>

namespace cindertop::desktop {

namespace {

/// Beside the preferences, but none of them: what the user has once been asked stays true.
constexpr auto askedKey = "cindertop.notifications.asked";

QDBusMessage busCall(const QString& method, const QVariantList& arguments) {
    auto call = QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                               "org.freedesktop.DBus", method);
    call.setArguments(arguments);
    return call;
}

/// The first returned value, if it is of this type: anything may run under the service's name.
template <typename Value>
std::expected<Value, NotificationError> returned(const BusCalls::Result& result) {
    if (!result) {
        return std::unexpected(NotificationError{result.error()});
    }
    if (result->isEmpty() || result->front().metaType() != QMetaType::fromType<Value>()) {
        return std::unexpected(NotificationError{"an answer of an unexpected type"});
    }
    return result->front().value<Value>();
}

/// Notifications with the same one take each other's place.
const std::string& placeOf(const UserNotificationRequest& request) {
    return request.content.threadIdentifier.empty() ? request.identifier : request.content.threadIdentifier;
}

} // namespace

FreedesktopNotificationCenter::FreedesktopNotificationCenter(QDBusConnection bus, Timers& timers,
                                                             UserDefaults& defaults,
                                                             NotificationSwitch isSwitchedOff)
    : defaults_(defaults),
      isSwitchedOff_(std::move(isSwitchedOff)),
      owner_(notificationService, bus, QDBusServiceWatcher::WatchForOwnerChange),
      calls_(std::move(bus), timers) {
    QObject::connect(&owner_, &QDBusServiceWatcher::serviceOwnerChanged, &owner_, [this] { forgetServer(); });
}

void FreedesktopNotificationCenter::useBus(const QDBusConnection& bus) {
    owner_.setConnection(bus);
    calls_.useBus(bus);
    forgetServer();
}

void FreedesktopNotificationCenter::forgetServer() {
    server_ = {};
    if (serverObserver_) {
        serverObserver_();
    }
}

void FreedesktopNotificationCenter::readAuthorizationStatus(StatusCompletion completion) {
    findServer([this, completion = std::move(completion)](bool isThere) {
        completion(isThere ? statusWithServer() : NotificationAuthorizationStatus::unknown);
    });
}

void FreedesktopNotificationCenter::requestAuthorization(NotificationAuthorizationOptions /*options*/,
                                                         PermissionCompletion completion) {
    defaults_.set(askedKey, true);
    findServer([this, completion = std::move(completion)](bool isThere) {
        if (!isThere) {
            completion(std::unexpected(NotificationError{"there is no notification server"}));
            return;
        }
        completion(isSwitchedOff_() ? NotificationPermission::refused : NotificationPermission::granted);
    });
}

void FreedesktopNotificationCenter::findServer(std::function<void(bool)> completion) {
    calls_.send(busCall("NameHasOwner", {notificationService}),
                [this, completion = std::move(completion)](const BusCalls::Result& result) {
                    if (returned<bool>(result).value_or(false)) {
                        completion(true);
                    } else {
                        findStartableServer(completion);
                    }
                });
}

void FreedesktopNotificationCenter::findStartableServer(std::function<void(bool)> completion) {
    calls_.send(busCall("ListActivatableNames", {}), [completion = std::move(completion)](
                                                         const BusCalls::Result& result) {
        completion(returned<QStringList>(result).value_or(QStringList{}).contains(notificationService));
    });
}

NotificationAuthorizationStatus FreedesktopNotificationCenter::statusWithServer() const {
    if (isSwitchedOff_()) {
        return NotificationAuthorizationStatus::denied;
    }
    return defaults_.value(askedKey) == PropertyValue{true} ? NotificationAuthorizationStatus::authorized
                                                            : NotificationAuthorizationStatus::notDetermined;
}

void FreedesktopNotificationCenter::add(UserNotificationRequest request, AddCompletion completion) {
    if (request.delay) {
        calls_.refuse("a notification cannot be delayed",
                      [completion = std::move(completion)](const BusCalls::Result& result) {
                          completion(std::unexpected(NotificationError{result.error()}));
                      });
        return;
    }
    postings_.push_back({std::move(request), std::move(completion)});
    if (postings_.size() == 1) {
        beginPosting();
    }
}

void FreedesktopNotificationCenter::beginPosting() {
    if (server_.showsMarkup) {
        notify();
        return;
    }
    calls_.send(notificationCall("GetCapabilities"),
                [this](const BusCalls::Result& result) { takeCapabilities(result); });
}

void FreedesktopNotificationCenter::takeCapabilities(const BusCalls::Result& result) {
    const auto capabilities = returned<QStringList>(result);
    if (!capabilities) {
        endPosting(std::unexpected(capabilities.error()));
        return;
    }
    server_.showsMarkup = capabilities->contains("body-markup");
    notify();
}

void FreedesktopNotificationCenter::notify() {
    const auto& request = postings_.front().request;
    const auto former = server_.shown.find(placeOf(request));
    calls_.send(notifyCall(request.content, former == server_.shown.end() ? 0 : former->second,
                           server_.showsMarkup.value_or(false)),
                [this](const BusCalls::Result& result) { takeNumber(result); });
}

void FreedesktopNotificationCenter::takeNumber(const BusCalls::Result& result) {
    const auto number = returned<uint>(result);
    if (!number) {
        endPosting(std::unexpected(number.error()));
        return;
    }
    if (server_.showsMarkup) { // else another server has taken over: the number would be of another's there
        server_.shown[placeOf(postings_.front().request)] = *number;
    }
    endPosting({});
}

void FreedesktopNotificationCenter::endPosting(const AddResult& result) {
    const auto completion = std::move(postings_.front().completion);
    postings_.pop_front();
    if (!postings_.empty()) {
        beginPosting();
    }
    completion(result); // the last step: it may destroy this
}

} // namespace cindertop::desktop
