#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace cindertop {

/// Which letters a text holds, one bit for each of 64 classes of bytes.
constexpr std::uint64_t lettersOf(std::string_view text) {
    std::uint64_t letters = 0;
    for (const char letter : text) {
        letters |= std::uint64_t{1} << (static_cast<unsigned char>(letter) % 64);
    }
    return letters;
}

/// A text that is searched for fragments: the letters rule most of them out without a search.
class SearchedText {
public:
    explicit constexpr SearchedText(std::string_view text) : text_(text), letters_(lettersOf(text)) {}

    constexpr bool contains(std::string_view fragment, std::uint64_t fragmentLetters) const {
        return (fragmentLetters & ~letters_) == 0 && text_.contains(fragment);
    }

private:
    std::string_view text_;
    std::uint64_t letters_;
};

/// A part of a name by which a kind of application is known.
class NameFragment {
public:
    consteval NameFragment(const char* text) : text_(text), letters_(lettersOf(text)) {}

    constexpr bool isIn(const SearchedText& searched) const { return searched.contains(text_, letters_); }

private:
    std::string_view text_;
    std::uint64_t letters_;
};

} // namespace cindertop
