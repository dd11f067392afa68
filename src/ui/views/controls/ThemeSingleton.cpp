#include "ui/views/controls/ThemeSingleton.h"

#include "ui/theme/Symbols.h"

#include <QFontDatabase>
#include <QQmlEngine>
#include <QResource>
#include <utility>

namespace cindertop::ui {

namespace {

const Appearance* nextAppearance = nullptr;

void registerTextFonts() {
    static const bool isDone = [] {
        for (const auto* const cut : {"Regular", "Medium", "SemiBold", "Bold"}) {
            // Stored as it is, so that Qt reads it where it lies and keeps no copy.
            const QResource font(QString(":/cindertop/fonts/Inter-%1.otf").arg(cut));
            QFontDatabase::addApplicationFontFromData(
                QByteArray::fromRawData(reinterpret_cast<const char*>(font.data()), font.size()));
        }
        return true;
    }();
    Q_UNUSED(isDone)
}

constexpr int darker = 108; ///< percent

bool hasLevel(int status) {
    return status >= 0 && std::cmp_less(status, allLevels.size());
}

} // namespace

ThemeSingleton::ThemeSingleton(const Appearance& appearance, QObject* parent)
    : QObject(parent), appearance_(appearance) {
    registerTextFonts();
    connect(&appearance, &Appearance::changed, this, &ThemeSingleton::changed);
}

ThemeSingleton* ThemeSingleton::create(QQmlEngine* engine, QJSEngine* /*scriptEngine*/) {
    static const Appearance usual;
    return new ThemeSingleton(nextAppearance != nullptr ? *nextAppearance : usual, engine);
}

void ThemeSingleton::setAppearance(const Appearance& appearance) {
    nextAppearance = &appearance;
}

QString ThemeSingleton::symbolText(const QString& symbolName) const {
    return ui::symbolText(symbolName.toStdString());
}

QColor ThemeSingleton::levelColor(int status) const {
    return hasLevel(status) ? color(allLevels.at(static_cast<std::size_t>(status))) : Theme::Colors::paused;
}

QColor ThemeSingleton::levelText(int status) const {
    return hasLevel(status) ? appearance_.materials().levelText.at(static_cast<std::size_t>(status))
                            : secondaryText();
}

QColor ThemeSingleton::faded(const QColor& color, double opacity) const {
    auto faded = color;
    faded.setAlphaF(color.alphaF() * static_cast<float>(opacity));
    return faded;
}

QColor ThemeSingleton::pressed(const QColor& color) const {
    return color.darker(darker);
}

QColor ThemeSingleton::switchTrackOff() const {
    return isDark() ? Theme::Colors::switchTrackOff : Theme::Colors::switchTrackOffOnLight;
}

QString ThemeSingleton::iconFamily() const {
    return iconFontFamily();
}

QFont ThemeSingleton::bodyMedium() const {
    auto medium = body();
    medium.setWeight(QFont::Medium);
    return medium;
}

QFont ThemeSingleton::bodyStrong() const {
    auto strong = body();
    strong.setWeight(QFont::DemiBold);
    return strong;
}

QFont ThemeSingleton::font(const Theme::Typography::Style& style) const {
    return Theme::Typography::font(style, appearance_.textScale());
}

int ThemeSingleton::duration(std::chrono::milliseconds usual) const {
    return reducesMotion() ? 0 : static_cast<int>(usual.count());
}

} // namespace cindertop::ui
