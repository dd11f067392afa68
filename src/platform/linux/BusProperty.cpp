#include "platform/linux/BusProperty.h"

#include <string_view>
#include <utility>

namespace cindertop::linux_platform {

namespace {

using namespace std::chrono_literals;

constexpr auto propertiesInterface = "org.freedesktop.DBus.Properties";
constexpr auto answerTime = 5s;
constexpr auto retryPause = 30s;
/// sd-bus must not measure the time limit by its own clock.
constexpr std::uint64_t noTimeout = UINT64_MAX;

std::optional<std::string_view> readText(sd_bus_message* message) {
    const char* text = nullptr;
    return sd_bus_message_read(message, "s", &text) > 0 ? std::optional<std::string_view>(text)
                                                        : std::nullopt;
}

std::optional<PropertyValue> readBasic(sd_bus_message* message, std::string_view type) {
    if (type == "s") {
        return readText(message).transform([](std::string_view text) { return std::string(text); });
    }
    int truth = 0;
    if (type == "b" && sd_bus_message_read_basic(message, 'b', &truth) > 0) {
        return PropertyValue(truth != 0);
    }
    return std::nullopt;
}

/// The value in the variant that stands next; none for a type that is neither text nor boolean.
std::optional<PropertyValue> readVariant(sd_bus_message* message) {
    char type = 0;
    const char* contents = nullptr;
    if (sd_bus_message_peek_type(message, &type, &contents) <= 0 || type != SD_BUS_TYPE_VARIANT) {
        return std::nullopt;
    }
    const std::string inner(contents);
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_VARIANT, inner.c_str()) <= 0) {
        return std::nullopt;
    }
    auto value = readBasic(message, inner);
    sd_bus_message_exit_container(message);
    return value;
}

/// Leaves the message at the variant of the dictionary's entry `member`; false when there is no such entry.
bool seekEntry(sd_bus_message* message, const std::string& member) {
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{sv}") <= 0) {
        return false;
    }
    while (sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0) {
        if (readText(message) == member) {
            return true;
        }
        if (sd_bus_message_skip(message, "v") < 0 || sd_bus_message_exit_container(message) < 0) {
            return false;
        }
    }
    return false;
}

} // namespace

BusProperty::BusProperty(SystemBus& bus, BusPropertyName name) : bus_(bus), name_(std::move(name)) {}

BusProperty::BusProperty(SystemBus& bus, BusPropertyName name, std::chrono::nanoseconds askAgainAfter)
    : bus_(bus), name_(std::move(name)), askAgainAfter_(askAgainAfter) {}

std::optional<PropertyValue> BusProperty::value() {
    bus_.update();
    if (bus_.handle() == nullptr) {
        return std::nullopt;
    }
    if (connection_ != bus_.connection()) {
        subscribe();
        return value_;
    }
    dropOutdated();
    if (shouldAskAgain()) {
        ask();
    }
    return value_;
}

void BusProperty::dropOutdated() {
    const auto now = bus_.now();
    if (isAsking_ && now - askedAt_ >= answerTime) {
        isAsking_ = false;
        isRefused_ = true;
        answer_.reset();
        value_.reset();
    }
    if (askAgainAfter_ && !isAnnounced_ && now - valueAskedAt_ >= *askAgainAfter_ + answerTime) {
        value_.reset();
    }
}

bool BusProperty::shouldAskAgain() const {
    if (isAsking_ || (value_ && (isAnnounced_ || !askAgainAfter_))) {
        return false;
    }
    const auto pause = isRefused_ || !askAgainAfter_ ? retryPause : *askAgainAfter_;
    return bus_.now() - askedAt_ >= pause;
}

void BusProperty::subscribe() {
    connection_ = bus_.connection();
    value_.reset();
    isAnnounced_ = false;
    changes_ = listen(bus_.handle(),
                      signalMatch({name_.service.c_str(), name_.path.c_str(), propertiesInterface},
                                  "PropertiesChanged", name_.interface),
                      onChange, this);
    owners_ = listen(bus_.handle(), ownerMatch(name_.service), onOwner, this);
    ask();
}

void BusProperty::ask() {
    const auto request =
        newCall(bus_.handle(), {name_.service.c_str(), name_.path.c_str(), propertiesInterface}, "Get");
    if (!request) {
        return;
    }
    askedAt_ = bus_.now();
    sd_bus_slot* slot = nullptr;
    isAsking_ =
        sd_bus_message_append(request.get(), "ss", name_.interface.c_str(), name_.member.c_str()) >= 0 &&
        sd_bus_call_async(bus_.handle(), &slot, request.get(), onAnswer, this, noTimeout) >= 0;
    answer_.reset(slot);
}

int BusProperty::onAnswer(sd_bus_message* message, void* property, sd_bus_error* /*error*/) {
    auto& self = *static_cast<BusProperty*>(property);
    self.isAsking_ = false;
    self.value_ = sd_bus_message_is_method_error(message, nullptr) > 0 ? std::nullopt : readVariant(message);
    self.valueAskedAt_ = self.askedAt_;
    self.isRefused_ = !self.value_;
    return 0;
}

int BusProperty::onChange(sd_bus_message* message, void* property, sd_bus_error* /*error*/) {
    auto& self = *static_cast<BusProperty*>(property);
    if (readText(message) != self.name_.interface) {
        return 0;
    }
    if (seekEntry(message, self.name_.member)) {
        self.isAnnounced_ = true;
        self.value_ = readVariant(message);
        return 0;
    }
    // Another property changed, or this one was invalidated: the announcement then names it without a value.
    sd_bus_message_rewind(message, 1);
    if (sd_bus_message_skip(message, "sa{sv}") < 0 ||
        sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "s") <= 0) {
        return 0;
    }
    while (const auto invalidated = readText(message)) {
        if (*invalidated == self.name_.member) {
            self.value_.reset();
            self.ask();
        }
    }
    return 0;
}

int BusProperty::onOwner(sd_bus_message* message, void* property, sd_bus_error* /*error*/) {
    auto& self = *static_cast<BusProperty*>(property);
    if (sd_bus_message_skip(message, "ss") < 0) {
        return 0;
    }
    self.isAnnounced_ = false; // the next owner may be another version
    self.value_.reset();
    const auto owner = readText(message);
    if ((!owner || !owner->empty()) && self.bus_.handle() != nullptr) {
        self.ask();
    }
    return 0;
}

} // namespace cindertop::linux_platform
