#include "cpu/ShareOrder.h"

#include <gtest/gtest.h>

#include <random>

namespace cindertop {
namespace {

struct Entry {
    double cpuPercent;
    std::string text;
    int index;

    std::string_view name() const { return text; }

    bool operator==(const Entry&) const = default;
};

/// Few letters and few shares, so that ties and names that differ in case only are common.
std::vector<Entry> randomEntries(std::mt19937& random, int count, int shares) {
    static constexpr std::array letters{"a", "A", "b", "\u00e4", "\u00c4", "z", "-", " ", "\u4e2d", "9"};
    std::uniform_int_distribution<std::size_t> letter(0, letters.size() - 1);
    std::uniform_int_distribution<int> length(0, 4);
    std::uniform_int_distribution<int> share(0, shares);
    std::vector<Entry> entries;
    for (int index = 0; index < count; ++index) {
        Entry entry{.cpuPercent = share(random) / 4.0, .text = {}, .index = index};
        for (int left = length(random); left > 0; --left) {
            entry.text += letters[letter(random)];
        }
        entries.push_back(std::move(entry));
    }
    return entries;
}

TEST(ShareOrder, EqualsThePlainStableSort) {
    std::mt19937 random(20'240'229);
    for (const auto* const locale : {"en_GB", "de_DE", "sv_SE", "cs_CZ"}) {
        const LocalizedComparison comparison(locale);
        for (int round = 0; round < 60; ++round) {
            const int count = round % 2 == 0 ? round : round * 10;
            std::vector<Entry> entries = randomEntries(random, count, round % 7);
            std::vector<Entry> plain = entries;
            std::ranges::stable_sort(plain, [&comparison](const Entry& left, const Entry& right) {
                return left.cpuPercent != right.cpuPercent
                           ? left.cpuPercent > right.cpuPercent
                           : comparison.compare(left.name(), right.name()) < 0;
            });
            const auto wanted = static_cast<std::size_t>(count) * static_cast<std::size_t>(round % 4) / 3;
            const auto compared = static_cast<std::ptrdiff_t>(std::min(wanted, entries.size()));
            sortByShare(std::span(entries));
            orderEqualShares(std::span(entries), wanted, comparison);
            EXPECT_TRUE(std::equal(plain.begin(), plain.begin() + compared, entries.begin()))
                << locale << ", round " << round;
            EXPECT_TRUE(std::ranges::is_permutation(plain, entries));
        }
    }
}

} // namespace
} // namespace cindertop
