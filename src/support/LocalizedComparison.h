#pragma once

#include <unicode/uversion.h>

#include <memory>
#include <string>
#include <string_view>

U_NAMESPACE_BEGIN
class Collator;
U_NAMESPACE_END

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

private:
    std::unique_ptr<const icu::Collator> collator_;
};

} // namespace cindertop
