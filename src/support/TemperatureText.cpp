#include "support/TemperatureText.h"

#include "support/UserLocale.h"

#include <unicode/locid.h>
#include <unicode/measunit.h>
#include <unicode/numberformatter.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <memory>
#include <mutex>
#include <string_view>
#include <utility>

namespace cindertop {

namespace {

using Unit = TemperatureFormatter::Unit;

constexpr std::array<std::string_view, 6> fahrenheitRegions{"US", "BS", "BZ", "KY", "PR", "PW"};

Unit unitOfRegion(std::string_view region) {
    return std::ranges::find(fahrenheitRegions, region) == fahrenheitRegions.end() ? Unit::celsius
                                                                                   : Unit::fahrenheit;
}

double inUnit(double celsius, Unit unit) {
    return unit == Unit::fahrenheit ? celsius * 9 / 5 + 32 : celsius;
}

std::string plainTextIn(double celsius, Unit unit) {
    const auto rounded = std::round(inUnit(celsius, unit));
    const auto number = rounded == 0 ? 0 : rounded; // no minus sign for zero
    std::array<char, 320> digits{};                 // the longest double has 310 characters
    const auto [end, error] =
        std::to_chars(digits.begin(), digits.end(), number, std::chars_format::fixed, 0);
    const std::string text(digits.begin(), error == std::errc{} ? end : digits.begin());
    return text + (unit == Unit::fahrenheit ? "°F" : "°C");
}

Unit plainUnit(std::string_view locale) {
    const auto separator = locale.rfind('_');
    return separator == std::string_view::npos ? Unit::celsius : unitOfRegion(locale.substr(separator + 1));
}

/// Numbers are converted before ICU sees them: with `usage` it would choose the unit by the text's locale,
/// and C would be American.
icu::number::LocalizedNumberFormatter icuFormatter(const std::string& textLocale, Unit unit) {
    return icu::number::NumberFormatter::withLocale(icu::Locale(icuLocaleName(textLocale).c_str()))
        .unit(unit == Unit::fahrenheit ? icu::MeasureUnit::getFahrenheit() : icu::MeasureUnit::getCelsius())
        .unitWidth(UNUM_UNIT_WIDTH_SHORT)
        .precision(icu::number::Precision::integer())
        .roundingMode(UNUM_ROUND_HALFUP)
        .sign(UNUM_SIGN_NEGATIVE);
}

Unit chosenUnit(TemperatureUnit chosen, Unit regional) {
    switch (chosen) {
    case TemperatureUnit::celsius:
        return Unit::celsius;
    case TemperatureUnit::fahrenheit:
        return Unit::fahrenheit;
    case TemperatureUnit::region:
        break;
    }
    return regional;
}

/// Writes in one language, in either unit.
class LocalizedWriter {
public:
    LocalizedWriter(const std::string& textLocale, Unit regional)
        : celsius_(icuFormatter(textLocale, Unit::celsius)),
          fahrenheit_(icuFormatter(textLocale, Unit::fahrenheit)),
          regional_(regional) {}

    std::string operator()(double celsius, TemperatureUnit chosen) const {
        const Unit unit = chosenUnit(chosen, regional_);
        const auto& formatter = unit == Unit::fahrenheit ? fahrenheit_ : celsius_;
        auto status = U_ZERO_ERROR;
        std::string text;
        formatter.formatDouble(inUnit(celsius, unit), status).toString(status).toUTF8String(text);
        return U_SUCCESS(status) != 0 ? text : plainTextIn(celsius, unit);
    }

private:
    icu::number::LocalizedNumberFormatter celsius_;
    icu::number::LocalizedNumberFormatter fahrenheit_;
    Unit regional_;
};

/// Makes a writer anew when the user's locale has changed.
class FollowingWriter {
public:
    explicit FollowingWriter(FollowedLocale locale) : locale_(std::move(locale)) {}

    std::string text(double celsius, TemperatureUnit unit) {
        const std::scoped_lock lock(mutex_);
        auto measurement = locale_.name("LC_MEASUREMENT");
        auto number = locale_.name("LC_NUMERIC");
        if (!writer_ || measurement != measurement_ || number != number_) {
            measurement_ = std::move(measurement);
            number_ = std::move(number);
            const icu::Locale region(icuLocaleName(measurement_).c_str());
            writer_.emplace(number_, unitOfRegion(region.getCountry()));
        }
        return (*writer_)(celsius, unit);
    }

private:
    std::mutex mutex_;
    FollowedLocale locale_;
    std::string measurement_;
    std::string number_;
    std::optional<LocalizedWriter> writer_;
};

} // namespace

TemperatureFormatter::TemperatureFormatter(const std::string& textLocale, Unit unit)
    : TemperatureFormatter(Writer(LocalizedWriter(textLocale, unit))) {}

TemperatureFormatter TemperatureFormatter::ofUser(FollowedLocale locale) {
    auto writer = std::make_shared<FollowingWriter>(std::move(locale));
    return TemperatureFormatter([writer = std::move(writer)](double celsius, TemperatureUnit unit) {
        return writer->text(celsius, unit);
    });
}

TemperatureFormatter TemperatureFormatter::plain(const std::string& locale) {
    return TemperatureFormatter([regional = plainUnit(locale)](double celsius, TemperatureUnit unit) {
        return plainTextIn(celsius, chosenUnit(unit, regional));
    });
}

TemperatureFormatter TemperatureFormatter::in(TemperatureUnit unit) const {
    auto formatter = *this;
    formatter.unit_ = unit;
    return formatter;
}

std::string TemperatureFormatter::text(double celsius) const {
    return write_(celsius, unit_);
}

std::optional<std::string> TemperatureFormatter::text(std::optional<double> celsius) const {
    if (!celsius || !std::isfinite(*celsius)) {
        return std::nullopt;
    }
    return text(*celsius);
}

} // namespace cindertop
