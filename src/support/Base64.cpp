#include "support/Base64.h"

#include <sodium/utils.h>

namespace cindertop {
namespace {

constexpr int variant = sodium_base64_VARIANT_ORIGINAL;

} // namespace

std::string base64Text(std::span<const std::byte> bytes) {
    std::string text(sodium_base64_ENCODED_LEN(bytes.size(), variant), '\0');
    sodium_bin2base64(text.data(), text.size(), reinterpret_cast<const unsigned char*>(bytes.data()),
                      bytes.size(), variant);
    text.pop_back(); // the zero at the end
    return text;
}

std::optional<std::vector<std::byte>> parseBase64(std::string_view text) {
    std::vector<std::byte> bytes(text.size() / 4 * 3 + 3);
    std::size_t size = 0;
    const bool isBase64 =
        !text.contains('\0') && // which would count as a blank
        sodium_base642bin(reinterpret_cast<unsigned char*>(bytes.data()), bytes.size(), text.data(),
                          text.size(), " \t\r\n", &size, nullptr, variant) == 0;
    if (!isBase64) {
        return std::nullopt;
    }
    bytes.resize(size);
    return bytes;
}

} // namespace cindertop
