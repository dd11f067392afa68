#include "support/Base64.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace cindertop {
namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t noLetter = 0xFF;

constexpr std::array<std::uint8_t, 256> values = [] {
    std::array<std::uint8_t, 256> table{};
    table.fill(noLetter);
    for (std::size_t value = 0; value < alphabet.size(); ++value) {
        table[static_cast<unsigned char>(alphabet[value])] = static_cast<std::uint8_t>(value);
    }
    return table;
}();

constexpr bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

} // namespace

std::string base64Text(std::span<const std::byte> bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t start = 0; start < bytes.size(); start += 3) {
        const auto group = bytes.subspan(start, std::min<std::size_t>(3, bytes.size() - start));
        std::uint32_t bits = 0;
        for (std::size_t index = 0; index < 3; ++index) {
            bits = bits << 8U | (index < group.size() ? std::to_integer<std::uint32_t>(group[index]) : 0U);
        }
        for (std::size_t index = 0; index < 4; ++index) {
            text += index <= group.size() ? alphabet[bits >> (18 - 6 * index) & 0x3FU] : '=';
        }
    }
    return text;
}

std::optional<std::vector<std::byte>> parseBase64(std::string_view text) {
    std::vector<std::byte> bytes;
    bytes.reserve(text.size() / 4 * 3);
    std::uint32_t bits = 0;
    unsigned pendingBits = 0;
    std::size_t letters = 0;
    std::size_t padding = 0;
    for (const char c : text) {
        if (isBlank(c)) {
            continue;
        }
        ++letters;
        if (c == '=') {
            ++padding;
            continue;
        }
        const std::uint8_t value = values[static_cast<unsigned char>(c)];
        if (value == noLetter || padding > 0) {
            return std::nullopt;
        }
        bits = (bits << 6U | value) & 0xFFFFU;
        pendingBits += 6;
        if (pendingBits >= 8) {
            pendingBits -= 8;
            bytes.push_back(static_cast<std::byte>(bits >> pendingBits & 0xFFU));
        }
    }
    const std::uint32_t leftOver = bits & ((1U << pendingBits) - 1U);
    // Of the last group two letters make a byte and three make two; one letter makes none.
    const bool isPaddingRight = pendingBits < 6 && padding * 2 == pendingBits;
    if (letters % 4 != 0 || !isPaddingRight || leftOver != 0) {
        return std::nullopt;
    }
    return bytes;
}

} // namespace cindertop
