#include "Require.h"
#include "fakes/FakeUserDefaults.h"
#include "persistence/AppSettingsStore.h"
#include "support/PropertyListValue.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

using namespace cindertop;

/// The values of a preferences file; what is no single value is left out.
UserDefaults::Registration valuesOf(const PropertyListValue::Dictionary& dictionary) {
    UserDefaults::Registration values;
    for (const auto& [key, tree] : dictionary) {
        if (const auto* const boolean = std::get_if<bool>(&tree.value)) {
            values.emplace(key, *boolean);
        } else if (const auto* const integer = std::get_if<std::int64_t>(&tree.value)) {
            values.emplace(key, *integer);
        } else if (const auto* const real = std::get_if<double>(&tree.value)) {
            values.emplace(key, *real);
        } else if (const auto* const text = std::get_if<std::string>(&tree.value)) {
            values.emplace(key, *text);
        }
    }
    return values;
}

} // namespace

/// Settings are repaired whatever was stored, and loading them once more changes nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = parsePropertyList(std::string(reinterpret_cast<const char*>(data), size));
    const auto* const dictionary = file ? std::get_if<PropertyListValue::Dictionary>(&file->value) : nullptr;
    if (dictionary == nullptr) {
        return 0;
    }
    for (const auto& system : casesOf<OperatingSystem>()) {
        fakes::FakeUserDefaults defaults;
        defaults.stored = valuesOf(*dictionary);
        AppSettingsStore store(defaults, defaultSettings(system.value));
        const AppSettings settings = store.load();
        require(settings == AppSettings(*settings) && store.load() == settings);
    }
    return 0;
}
