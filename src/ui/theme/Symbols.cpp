#include "ui/theme/Symbols.h"

#include <QFontDatabase>
#include <QResource>
#include <QStringList>
#include <algorithm>
#include <array>

static void initialiseResource() {
    Q_INIT_RESOURCE(icon_font); // a static library's resources are not found by themselves
}

namespace cindertop::ui {

QByteArray iconFontData() {
    initialiseResource();
    // Stored as it is, so that Qt reads it where it lies and keeps no copy.
    const QResource data(":/cindertop/icons.ttf");
    return QByteArray::fromRawData(reinterpret_cast<const char*>(data.data()), data.size());
}

const QString& iconFontFamily() {
    static const QString family = [] {
        const int font = QFontDatabase::addApplicationFontFromData(iconFontData());
        return QFontDatabase::applicationFontFamilies(font).value(0);
    }();
    return family;
}

namespace {

struct Symbol {
    std::string_view name;
    char16_t codePoint; ///< in Material Icons
};

constexpr std::array symbols{
    Symbol{"arrow.clockwise.circle", 0xE5D5},
    Symbol{"arrow.counterclockwise", 0xF053},
    Symbol{"arrow.down", 0xE5DB},
    Symbol{"arrow.triangle.2.circlepath", 0xE863},
    Symbol{"arrow.up", 0xE5D8},
    Symbol{"battery.100percent", 0xE1A4},
    Symbol{"bell", 0xE7F4},
    Symbol{"bell.badge", 0xE7F7},
    Symbol{"calendar", 0xE935},
    Symbol{"chart.xyaxis.line", 0xE6E1},
    Symbol{"checkmark", 0xE5CA},
    Symbol{"checkmark.circle", 0xE92D},
    Symbol{"checkmark.circle.fill", 0xE86C},
    Symbol{"chevron.down", 0xE5CF},
    Symbol{"chevron.left", 0xE5CB},
    Symbol{"chevron.right", 0xE5CC},
    Symbol{"clock", 0xE8B5},
    Symbol{"cpu", 0xE322},
    Symbol{"display", 0xE30C},
    Symbol{"doc.text", 0xE873},
    Symbol{"dock.rectangle", 0xE06C},
    Symbol{"exclamationmark", 0xE645},
    Symbol{"exclamationmark.octagon", 0xE160},
    Symbol{"exclamationmark.triangle", 0xE002},
    Symbol{"flame", 0xEF55},
    Symbol{"gearshape", 0xE8B8},
    Symbol{"globe", 0xE80B},
    Symbol{"hammer", 0xE869},
    Symbol{"info.circle", 0xE88E},
    Symbol{"laptopcomputer", 0xE31E},
    Symbol{"lightbulb", 0xE90F},
    Symbol{"menubar.rectangle", 0xE069},
    Symbol{"pause.fill", 0xE034},
    Symbol{"play.fill", 0xE037},
    Symbol{"power", 0xE8AC},
    Symbol{"powerplug", 0xE63C},
    Symbol{"questionmark.circle", 0xE8FD},
    Symbol{"slider.horizontal.3", 0xE429},
    Symbol{"speedometer", 0xE9E4},
    Symbol{"square.and.arrow.up", 0xE89E},
    Symbol{"thermometer.medium", 0xE1FF},
    Symbol{"timer", 0xE425},
    Symbol{"xmark", 0xE5CD},
    Symbol{"xmark.circle.fill", 0xE5C9},
};
static_assert(std::ranges::is_sorted(symbols, {}, &Symbol::name));

} // namespace

QString symbolText(std::string_view symbolName) {
    const auto* const symbol = std::ranges::lower_bound(symbols, symbolName, {}, &Symbol::name);
    return symbol != symbols.end() && symbol->name == symbolName ? QString(QChar(symbol->codePoint))
                                                                 : QString();
}

} // namespace cindertop::ui
