#include "platform/simulated/DecimalNumber.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <system_error>

namespace cindertop::simulated {

namespace {

/// Beyond any length that a text can have, and far from the limits of its type.
constexpr std::int64_t hugeExponent = 1'000'000'000'000'000;

std::int64_t exponentOf(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    std::int64_t exponent = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), exponent);
    if (error == std::errc::result_out_of_range) {
        return text.starts_with('-') ? -hugeExponent : hugeExponent;
    }
    return std::clamp(exponent, -hugeExponent, hugeExponent);
}

} // namespace

std::expected<std::int64_t, DecimalError> scaledDecimal(std::string_view number, int digits) {
    const auto mantissaLength = std::min(number.find_first_of("eE"), number.size());
    const auto mantissa = number.substr(0, mantissaLength);
    std::int64_t exponent = digits;
    if (mantissaLength < number.size()) {
        exponent += exponentOf(number.substr(mantissaLength + 1));
    }
    if (const auto point = mantissa.find('.'); point != std::string_view::npos) {
        exponent -= static_cast<std::int64_t>(mantissa.size() - point - 1);
    }

    std::string significant(mantissa);
    std::erase_if(significant, [](char letter) { return letter < '0' || letter > '9'; });
    significant.erase(0, significant.find_first_not_of('0'));
    if (significant.empty()) {
        return 0;
    }
    const auto significantLength = significant.find_last_not_of('0') + 1;
    exponent += static_cast<std::int64_t>(significant.size() - significantLength);
    significant.resize(significantLength);
    if (exponent < 0) {
        return std::unexpected(DecimalError::tooPrecise);
    }
    constexpr std::int64_t mostDigits = 19; // of a 64-bit integer
    if (static_cast<std::int64_t>(significant.size()) + exponent > mostDigits) {
        return std::unexpected(DecimalError::tooLarge);
    }
    significant.append(static_cast<std::size_t>(exponent), '0');
    if (mantissa.starts_with('-')) {
        significant.insert(0, 1, '-');
    }
    std::int64_t value = 0;
    const auto [end, error] =
        std::from_chars(significant.data(), significant.data() + significant.size(), value);
    if (error != std::errc{}) {
        return std::unexpected(DecimalError::tooLarge);
    }
    return value;
}

} // namespace cindertop::simulated
