#include "persistence/AppSettingsStore.h"
#include "support/PropertyListValue.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using namespace cindertop;

/// The values of a preferences file, in memory.
class FileDefaults final : public UserDefaults {
public:
    explicit FileDefaults(const PropertyListValue::Dictionary& dictionary) {
        for (const auto& [key, tree] : dictionary) {
            if (const auto* const boolean = std::get_if<bool>(&tree.value)) {
                values_.emplace(key, *boolean);
            } else if (const auto* const integer = std::get_if<std::int64_t>(&tree.value)) {
                values_.emplace(key, *integer);
            } else if (const auto* const real = std::get_if<double>(&tree.value)) {
                values_.emplace(key, *real);
            } else if (const auto* const text = std::get_if<std::string>(&tree.value)) {
                values_.emplace(key, *text);
            }
        }
    }

    std::optional<PropertyValue> value(std::string_view key) const override {
        const auto found = values_.find(key);
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }

    void registerDefaults(const Registration& defaults) override {
        values_.insert(defaults.begin(), defaults.end());
    }

    void apply(std::span<const UserDefaultsChange> changes) override {
        for (const auto& [key, value] : changes) {
            if (value) {
                values_.insert_or_assign(key, *value);
            } else {
                values_.erase(key);
            }
        }
    }

private:
    Registration values_;
};

} // namespace

/// Settings are repaired whatever was stored, and loading them once more changes nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = parsePropertyList(std::string(reinterpret_cast<const char*>(data), size));
    const auto* const dictionary = file ? std::get_if<PropertyListValue::Dictionary>(&file->value) : nullptr;
    if (dictionary == nullptr) {
        return 0;
    }
    for (const auto& system : casesOf<OperatingSystem>()) {
        FileDefaults defaults(*dictionary);
        AppSettingsStore store(defaults, defaultSettings(system.value));
        const AppSettings settings = store.load();
        if (settings != AppSettings(*settings) || store.load() != settings) {
            std::abort();
        }
    }
    return 0;
}
