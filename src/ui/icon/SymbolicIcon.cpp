// Prints the flame as a symbolic icon (SVG), which desktops draw in the colour of their own text.

#include "ui/FlameImages.h"

#include <QGuiApplication>
#include <QPainterPath>
#include <array>
#include <charconv>
#include <iostream>
#include <string>

namespace cindertop::ui {

namespace {

constexpr int iconSize = 16;
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

/// The class is how one family of desktops finds what to colour; the others colour everything.
void print(const QPainterPath& outline) {
    const auto size = std::to_string(iconSize);
    const auto box = std::to_string(grid);
    std::cout << R"(<svg xmlns="http://www.w3.org/2000/svg" width=")" + size + R"(" height=")" + size +
                     R"(" viewBox="0 0 )" + box + " " + box + "\">\n" +
                     R"(<style type="text/css" id="current-color-scheme">)" +
                     ".ColorScheme-Text{color:#bebebe}</style>\n" +
                     R"(<path class="ColorScheme-Text" fill="currentColor" fill-rule="evenodd" d=")" +
                     pathData(outline) + "\"/>\n</svg>\n";
}

} // namespace

} // namespace cindertop::ui

int main(int argumentCount, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argumentCount, arguments);
    cindertop::ui::print(cindertop::ui::FlameImages::outline(cindertop::ui::grid));
    return 0;
}
