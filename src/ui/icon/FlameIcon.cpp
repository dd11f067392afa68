// Prints the flame as an icon (SVG): "symbolic" for panels, "colored" for everything else, or the name of a
// look.

#include "support/Enumeration.h"
#include "ui/theme/FlameImages.h"
#include "ui/theme/Theme.h"

#include <QGuiApplication>
#include <QPainterPath>
#include <array>
#include <charconv>
#include <iostream>
#include <string>
#include <string_view>

namespace cindertop::ui {

namespace {

constexpr int grid = 24; ///< its margins are whole

std::string numberOf(double value) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.begin(), text.end(), value, std::chars_format::fixed, 3).ptr;
    return {text.begin(), end};
}

std::string commandOf(QPainterPath::ElementType type) {
    switch (type) {
    case QPainterPath::MoveToElement:
        return "M";
    case QPainterPath::LineToElement:
        return "L";
    case QPainterPath::CurveToElement:
        return "C";
    case QPainterPath::CurveToDataElement:
        return " ";
    }
    return " ";
}

std::string pathData(const QPainterPath& path) {
    std::string data;
    for (int index = 0; index < path.elementCount(); ++index) {
        const auto& element = path.elementAt(index);
        data += commandOf(element.type) + numberOf(element.x) + "," + numberOf(element.y);
    }
    return data + "Z";
}

struct Style {
    int size; ///< pixels
    std::string head;
    std::string fill;
};

/// Desktops draw it in the colour of their own text. The class is how one family of them finds what to
/// colour; the others colour everything.
Style symbolic() {
    return {.size = 16,
            .head =
                R"(<style type="text/css" id="current-color-scheme">.ColorScheme-Text{color:#bebebe}</style>)"
                "\n",
            .fill = R"(class="ColorScheme-Text" fill="currentColor")"};
}

Style colored() {
    return {.size = 128, .head = {}, .fill = std::string("fill=\"") + Theme::Colors::accentHex + '"'};
}

/// As the panel shows it at a level, or paused.
Style look(ThermalAssistantPresentation::Status status) {
    const auto color = FlameImages::color(status).value_or(Theme::Colors::accent);
    return {.size = 16, .head = {}, .fill = "fill=\"" + color.name().toStdString() + '"'};
}

Style styleOf(std::string_view name) {
    using Status = ThermalAssistantPresentation::Status;
    for (const auto status : {Status::fair, Status::serious, Status::critical, Status::paused}) {
        if (name == caseName(status)) {
            return look(status);
        }
    }
    return name == "colored" ? colored() : symbolic();
}

void print(const QPainterPath& outline, const Style& style) {
    const auto size = std::to_string(style.size);
    const auto box = std::to_string(grid);
    std::cout << R"(<svg xmlns="http://www.w3.org/2000/svg" width=")" + size + R"(" height=")" + size +
                     R"(" viewBox="0 0 )" + box + " " + box + "\">\n" + style.head + "<path " + style.fill +
                     R"( fill-rule="evenodd" d=")" + pathData(outline) + "\"/>\n</svg>\n";
}

} // namespace

} // namespace cindertop::ui

int main(int argumentCount, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argumentCount, arguments);
    using namespace cindertop::ui;
    print(FlameImages::outline(grid), styleOf(argumentCount > 1 ? arguments[1] : ""));
    return 0;
}
