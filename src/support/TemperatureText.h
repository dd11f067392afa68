#pragma once

#include "support/Enumeration.h"
#include "support/UserLocale.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace cindertop {

/// The unit that a person reads temperatures in: that of the region, or one chosen whatever the region.
enum class TemperatureUnit : std::uint8_t { region, celsius, fahrenheit };

template <>
struct EnumerationTable<TemperatureUnit> {
    static constexpr std::array cases{
        EnumerationCase{TemperatureUnit::region, "region"},
        EnumerationCase{TemperatureUnit::celsius, "celsius"},
        EnumerationCase{TemperatureUnit::fahrenheit, "fahrenheit"},
    };
};

/// Turns degrees Celsius into the text that people read: a whole number and the unit of their region
/// ("36°C"). Immutable after construction; any thread may use it.
class TemperatureFormatter {
public:
    enum class Unit { celsius, fahrenheit };

    /// `textLocale`, an ICU or POSIX name, decides digits and wording, `unit` the scale.
    TemperatureFormatter(const std::string& textLocale, Unit unit);

    /// As the user's locale says whenever a text is asked for: the unit follows the region of LC_ALL,
    /// LC_MEASUREMENT or LANG, the text follows LC_ALL, LC_NUMERIC or LANG. C and POSIX are Celsius.
    static TemperatureFormatter ofUser(FollowedLocale locale = FollowedLocale());

    /// The rule of replays, the same in every language: "36°C", "97°F", "-8°C", "0°C" with halves away from
    /// zero. Fahrenheit where the region, the part after the last "_", is US, BS, BZ, KY, PR or PW.
    static TemperatureFormatter plain(const std::string& locale);

    /// The same text in the unit that the user has chosen.
    TemperatureFormatter in(TemperatureUnit unit) const;

    /// Something readable for infinities and NaN too.
    std::string text(double celsius) const;
    /// A temperature that is absent or no finite number has no text.
    std::optional<std::string> text(std::optional<double> celsius) const;

private:
    /// Degrees Celsius as text, in the unit that was chosen or else the region's.
    using Writer = std::function<std::string(double celsius, TemperatureUnit unit)>;

    explicit TemperatureFormatter(Writer write) : write_(std::move(write)) {}

    Writer write_;
    TemperatureUnit unit_ = TemperatureUnit::region;
};

} // namespace cindertop
