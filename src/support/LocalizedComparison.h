#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop {

/// Compares names as a person reading a sorted list expects: by the language's rules, upper and lower case
/// alike, accents told apart. Immutable after construction; any thread may use it.
class LocalizedComparison {
public:
    /// `locale` is an ICU or POSIX locale name ("en_GB", "de_DE.UTF-8"); an unknown one sorts by the root
    /// rules.
    explicit LocalizedComparison(const std::string& locale);
    /// The rules of the user's language (LC_ALL, LC_COLLATE, LANG).
    static const LocalizedComparison& ofUser();

    ~LocalizedComparison();
    LocalizedComparison(const LocalizedComparison&) = delete;
    LocalizedComparison& operator=(const LocalizedComparison&) = delete;

    /// Below 0, 0 or above 0 as `left` sorts before, beside or behind `right`. Both are UTF-8.
    int compare(std::string_view left, std::string_view right) const;

    /// Bytes that sort, compared as unsigned bytes, just as `compare` sorts the texts: for long lists.
    std::string sortKey(std::string_view text) const;

    /// Such keys for a whole list, to be compared with one another only: far cheaper to make for plain ASCII
    /// texts.
    std::vector<std::string> sortKeys(std::span<const std::string_view> texts) const;

private:
    struct Rules;
    std::unique_ptr<const Rules> rules_;
};

} // namespace cindertop
