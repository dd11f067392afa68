#include "support/PropertyListText.h"
#include "support/PropertyListValue.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop {
namespace {

constexpr std::string_view head =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n";

std::string document(std::string_view value) {
    return std::string(head) + "<plist version=\"1.0\">" + std::string(value) + "</plist>\n";
}

/// The error of a text, empty when it is read.
std::string errorOf(std::string text) {
    const auto parsed = parsePropertyList(std::move(text));
    return parsed ? "" : parsed.error().what();
}

std::string nested(int depth) {
    std::string opening;
    std::string closing;
    for (int level = 0; level < depth; ++level) {
        opening += "<array>";
        closing += "</array>";
    }
    return opening + "<true/>" + closing;
}

TEST(PropertyList, WritesWhatItReads) {
    using Dictionary = PropertyListValue::Dictionary;
    const PropertyListValue value{Dictionary{
        {"", {std::string("an empty key")}},
        {"array", {PropertyListValue::Array{{true}, {false}, {PropertyListValue::Array{}}, {Dictionary{}}}}},
        {"blanks", {std::string(" \t\n ")}},
        {"data", {PropertyListValue::Data{std::byte{0}, std::byte{0xFF}, std::byte{62}, std::byte{63}}}},
        {"date", {Instant(std::chrono::seconds(-86'401))}},
        {"integers",
         {PropertyListValue::Array{{std::numeric_limits<std::int64_t>::min()},
                                   {std::numeric_limits<std::int64_t>::max()}}}},
        {"reals", {PropertyListValue::Array{{0.1}, {-0.0}, {5e-324}, {1.7976931348623157e308}, {3.0}}}},
        {"<markup> & \"quotes\"", {std::string("a<b>&amp;']]>ü€😀")}},
    }};
    for (const auto layout : {PropertyListLayout::indented, PropertyListLayout::compact}) {
        const auto text = propertyListText(value, layout);
        ASSERT_TRUE(text);
        EXPECT_EQ(parsePropertyList(*text), value) << *text;
    }
}

TEST(PropertyList, WritesForPeopleOrShort) {
    const PropertyListValue value{PropertyListValue::Dictionary{{"a", {PropertyListValue::Array{{true}}}}}};
    EXPECT_EQ(propertyListText(value, PropertyListLayout::indented),
              std::string(head) + "<plist version=\"1.0\">\n<dict>\n\t<key>a</key>\n\t<array>\n\t\t<true/>\n"
                                  "\t</array>\n</dict>\n</plist>\n");
    EXPECT_EQ(propertyListText(value, PropertyListLayout::compact),
              std::string(head) +
                  "<plist version=\"1.0\">\n<dict><key>a</key><array><true/></array></dict>\n</plist>\n");
}

TEST(PropertyList, ReadsWhatOthersWrite) {
    struct Case {
        std::string text;
        PropertyListValue value;
    };

    const std::array cases{
        Case{"\xEF\xBB\xBF" + document("<string>a</string>"), {std::string("a")}},
        Case{"<plist><string>without a head</string></plist>", {std::string("without a head")}},
        Case{"<!-- one --><plist version='1.0'>\n<!-- & two -->\n<true/>\n<!-- three --></plist>", {true}},
        Case{"<?xml version='1.0' encoding='utf-8'?>\n<plist><false></false></plist>", {false}},
        Case{document("<string>&#x1F600;&#65;&lt;&gt;&quot;&apos;&amp;</string>"),
             {std::string("😀A<>\"'&")}},
        Case{document("<string>a\r\nb\rc</string>"), {std::string("a\nb\nc")}},
        Case{document("<string/>"), {std::string()}},
        Case{document("<data>\n\tAA\n\tE=\n</data>"), {PropertyListValue::Data{std::byte{0}, std::byte{1}}}},
        Case{document("<dict>\n<!-- <key> -->\n<key>k</key><!-- v -->\n<integer>-1</integer>\n</dict>"),
             {PropertyListValue::Dictionary{{"k", {std::int64_t{-1}}}}}},
        Case{document("<real>1e3</real>"), {1000.0}},
        Case{document("<date>2024-02-29T23:59:59Z</date>"), {Instant(std::chrono::seconds(1'709'251'199))}},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(parsePropertyList(text), value) << text << errorOf(text);
    }
    EXPECT_EQ(errorOf(document(nested(64))), "");
}

TEST(PropertyList, RefusesTextAroundTheDocument) {
    const std::vector<std::string_view> texts{
        "",
        " \n",
        "bplist00",
        "<plist>",
        "<plist></plist>",
        "<plistx><true/></plist>",
        "text<plist><true/></plist>",
        "<plist><true/></plist>text",
        "<plist><true/></plist><!-- after -->",
        "<plist><true/></plist><plist><true/></plist>",
        "<plist><true/></plist></plist>",
        "<plist><true/></plist><!-- </plist>",
        "<plist><true/></plist><![CDATA[</plist>",
        "<plist><true/></plist><a </plist>",
        "<?xml version='1.0' encoding='latin1'?><plist><true/></plist>",
        "<!DOCTYPE plist SYSTEM \"file:///etc/passwd\"><plist><true/></plist>",
        "<!DOCTYPE plist [<!ENTITY a \"b\">]><plist><string>&a;</string></plist>",
        "<plist version=\"2.0\"><true/></plist>",
        "<plist version=\"1.0\" extra=\"1\"><true/></plist>",
        "<plist>text<true/></plist>",
        "<plist><true/><true/></plist>"};
    for (const std::string_view text : texts) {
        EXPECT_NE(errorOf(std::string(text)), "") << text;
    }
    EXPECT_EQ(errorOf(std::string(propertyListSizeLimit + 1, ' ')).substr(0, 13), "byte 33554432");
}

TEST(PropertyList, RefusesUnsoundValues) {
    struct Element {
        std::string name;
        std::vector<std::string> contents;
    };

    for (const auto& [name, contents] : {
             Element{"integer", {"", "1x", " 1", "1.0", "0x10", "9223372036854775808", "--1"}},
             {"real", {"", "nan", "inf", "-infinity", "1e999", "1,5", "1.5f", "0x1p3"}},
             {"true", {"x", " "}},
             {"date",
              {"2023-02-29T00:00:00Z", "2024-13-01T00:00:00Z", "2024-01-01T24:00:00Z", "2024-01-01T00:00:60Z",
               "2024-01-01T00:00:00.5Z", "2024-01-01 00:00:00Z", "2024-01-01T00:00:00",
               "1600-01-01T00:00:00Z", "2300-01-01T00:00:00Z"}},
             {"data", {"AAE", "A===", "AB==", "AA=A", "A*=="}},
             {"string",
              {"a<!-- b --> c", "<![CDATA[a]]>", "<true/>", "&unknown;", "&#0;", "&#x1F;", "&#xD800;",
               "&#xFFFE;", "&#x110000;", "& ", "&#4294967361;", "\x01", "\xC0\x80", "\xED\xA0\x80",
               std::string(1, '\0')}},
             {"array",
              {"<?instruction?>", "text", "<true/>text", "<![CDATA[ ]]>", "</dict>", "<unknown/>",
               "<key>a</key>", "<?true?>", "<string a='b'>c</string>", nested(64), nested(100'000)}},
             {"dict",
              {"<key>a</key>", "<true/>", "<key>a</key><true/><true/>", "<key>a</key><key>b</key><true/>",
               "<key>a</key><true/><key>a</key><true/>", "<key>&#65;</key><true/><key>A</key><true/>",
               "<key><true/></key><true/>", "text<key>a</key><true/>", "<key a='b'>a</key><true/>"}},
         }) {
        const std::string opening = '<' + name + '>';
        const std::string closing = "</" + name + '>';
        for (const std::string& content : contents) {
            EXPECT_NE(errorOf(document(std::string(opening).append(content).append(closing))), "")
                << name << ": " << content.substr(0, 100);
        }
    }
    EXPECT_NE(errorOf(document("<array>")), "");
}

TEST(PropertyList, FindsTheSameKeyAmongMany) {
    std::string entries;
    for (int number = 0; number < 40; ++number) {
        entries += "<key>k" + std::to_string(number) + "</key><true/>";
    }
    EXPECT_EQ(errorOf(document("<dict>" + entries + "</dict>")), "");
    EXPECT_EQ(errorOf(document("<dict>" + entries + "<key>k7</key><true/></dict>")),
              "the root: has the key \"k7\" twice");
}

TEST(PropertyList, NamesThePlaceOfAnError) {
    const std::string list = "<dict><key>a</key><array><true/><dict><key>b</key>VALUE</dict></array></dict>";

    struct Case {
        std::string_view value;
        std::string_view error;
    };

    for (const auto& [value, error] : std::to_array<Case>({
             {"<integer>x</integer>", "a[1].b: is no integer of 64 bits"},
             {"<array><dict><key>c</key></dict></array>", "a[1].b[0]: has a key without a value"},
             {"<float>1</float>", "a[1].b: is an unknown element <float>"},
         })) {
        std::string text = list;
        text.replace(text.find("VALUE"), 5, value);
        EXPECT_EQ(errorOf(document(text)), error);
    }
    EXPECT_EQ(errorOf("<plist>&b;</plist>"), "byte 7: refers to something that is no character");
    const auto wrongKind = decodedPropertyList(
        document("<dict><key>a</key><array><true/></array></dict>"),
        [](const PropertyListNode& root) { return root.dictionary()["a"].array().at(0).integer(); });
    ASSERT_FALSE(wrongKind);
    EXPECT_EQ(wrongKind.error().place(), "a[0]");
    EXPECT_STREQ(wrongKind.error().what(), "a[0]: is no integer");
}

TEST(PropertyList, FindsKeysInAnyOrder) {
    const auto sum = decodedPropertyList(
        document("<dict><key>a</key><integer>1</integer><key>b</key><array><true/></array>"
                 "<key>c</key><integer>4</integer></dict>"),
        [](const PropertyListNode& root) {
            const auto dictionary = root.dictionary();
            EXPECT_FALSE(dictionary.find("d"));
            return dictionary["c"].integer() + dictionary["a"].integer() + dictionary["c"].integer() +
                   (dictionary["b"].array().at(0).boolean() ? 8 : 0);
        });
    EXPECT_EQ(sum, 17);
}

TEST(PropertyList, LeavesOutWhatXmlCannotHold) {
    const auto text = propertyListText({std::string("a\0b\x1B\r\t\n\x7F\xC2\x85\xEF\xBF\xBE\xFF"
                                                    "c",
                                                    15)},
                                       PropertyListLayout::compact);
    ASSERT_TRUE(text);
    EXPECT_EQ(parsePropertyList(*text), PropertyListValue{std::string("ab\t\n\uFFFDc")});
}

TEST(PropertyList, RefusesToWriteWhatNobodyCouldRead) {
    PropertyListValue deep{true};
    for (int level = 0; level < 65; ++level) {
        deep = {PropertyListValue::Array{deep}};
    }
    for (const PropertyListValue& value :
         {PropertyListValue{std::numeric_limits<double>::quiet_NaN()},
          PropertyListValue{std::numeric_limits<double>::infinity()},
          PropertyListValue{PropertyListValue::Dictionary{{"a", {true}}, {"a\x01", {true}}}}, deep}) {
        EXPECT_FALSE(propertyListText(value, PropertyListLayout::compact));
    }
}

TEST(PropertyList, DropsTheFractionOfADateTowardsThePast) {
    for (const Instant instant : {Instant(std::chrono::nanoseconds(1'500'000'000)),
                                  Instant(std::chrono::nanoseconds(-1)), Instant::max()}) {
        const auto text = propertyListText({instant}, PropertyListLayout::compact);
        EXPECT_EQ(parsePropertyList(*text),
                  PropertyListValue{Instant(std::chrono::floor<std::chrono::seconds>(instant))});
    }
    EXPECT_TRUE(parsePropertyList(*propertyListText({Instant::min()}, PropertyListLayout::compact)));
}

} // namespace
} // namespace cindertop
