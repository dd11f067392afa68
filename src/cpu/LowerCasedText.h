#pragma once

#include "support/Text.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace cindertop {

/// A text in lower case that costs no allocation where it is in lower case already, as most names of
/// processes are. Looks at the text that it is made from.
class LowerCasedText {
public:
    explicit LowerCasedText(std::string_view text) {
        if (std::ranges::all_of(text, isLowerAscii)) {
            view_ = text;
        } else {
            changed_ = lowerCased(text);
            view_ = changed_;
        }
    }

    LowerCasedText(const LowerCasedText&) = delete;
    LowerCasedText& operator=(const LowerCasedText&) = delete;

    std::string_view view() const { return view_; }

private:
    static constexpr bool isLowerAscii(char byte) {
        return static_cast<unsigned char>(byte) < 0x80 && (byte < 'A' || byte > 'Z');
    }

    std::string changed_;
    std::string_view view_;
};

} // namespace cindertop
