#include "scenario/recorder/Anonymizer.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace cindertop {

namespace {

constexpr std::string_view replacement = "private";

bool belongsToWord(char byte) {
    const auto letter = static_cast<unsigned char>(byte);
    return letter >= 0x80 || (letter >= '0' && letter <= '9') || (letter >= 'a' && letter <= 'z') ||
           (letter >= 'A' && letter <= 'Z');
}

bool standsAlone(std::string_view text, std::size_t start, std::size_t length) {
    const std::size_t end = start + length;
    return (start == 0 || !belongsToWord(text[start - 1])) &&
           (end == text.size() || !belongsToWord(text[end]));
}

std::string withoutWord(std::string text, std::string_view word) {
    for (std::size_t start = text.find(word); start != std::string::npos;) {
        if (standsAlone(text, start, word.size())) {
            text.replace(start, word.size(), replacement);
            start += replacement.size();
        } else {
            ++start;
        }
        start = text.find(word, start);
    }
    return text;
}

/// "nginx: master /usr/sbin/nginx" is "nginx: master nginx"; "kworker/0:1" is no path.
std::string withoutFolders(std::string_view text) {
    std::string kept;
    while (!text.empty()) {
        const auto blank = std::min(text.find(' '), text.size());
        auto word = text.substr(0, blank);
        if (word.starts_with('/')) {
            word.remove_prefix(word.rfind('/') + 1);
        }
        const auto next = std::min(blank + 1, text.size());
        kept += std::string(word) + std::string(text.substr(blank, next - blank));
        text.remove_prefix(next);
    }
    return kept;
}

} // namespace

Anonymizer::Anonymizer(std::vector<std::string> privateWords) : privateWords_(std::move(privateWords)) {
    std::erase_if(privateWords_, [](const std::string& word) { return word.empty(); });
}

std::string Anonymizer::operator()(std::string_view text) const {
    std::string name = withoutFolders(text);
    for (const std::string& word : privateWords_) {
        name = withoutWord(std::move(name), word);
    }
    return name.empty() ? std::string(replacement) : name;
}

} // namespace cindertop
