#include "ui/views/controls/ApplicationIconProvider.h"

#include "ui/theme/Theme.h"

#include <QFile>
#include <QIcon>
#include <QPainter>
#include <QStandardPaths>
#include <QTextBoundaryFinder>
#include <QUrl>
#include <array>

namespace cindertop::ui {

namespace {

constexpr int usualSize = 32;
constexpr int lineLimit = 1000; ///< of a desktop entry; an icon named later is not looked for

// White text has 4.5:1 on each.
constexpr std::array<QRgb, 7> tileColors{0x1F6FD6, 0x7A4FCF, 0x5B6270, 0xC42A62,
                                         0x323B4E, 0x0F766E, 0xA8480F};

/// The value of "Icon" in the main group of a desktop entry; empty without one.
QString iconNameIn(QFile& entry) {
    bool isMainGroup = false;
    for (int line = 0; line < lineLimit && !entry.atEnd(); ++line) {
        const auto text = QString::fromUtf8(entry.readLine()).trimmed();
        if (text.startsWith('[')) {
            isMainGroup = text == "[Desktop Entry]";
        } else if (isMainGroup && text.startsWith("Icon=")) {
            return text.mid(5).trimmed();
        }
    }
    return {};
}

QString iconNameOf(const QString& identifier) {
    const auto file = QStandardPaths::locate(QStandardPaths::ApplicationsLocation, identifier + ".desktop");
    QFile entry(file);
    const auto named = !file.isEmpty() && entry.open(QIODevice::ReadOnly) ? iconNameIn(entry) : QString();
    return named.isEmpty() ? identifier : named;
}

QIcon iconOf(const QString& identifier) {
    if (identifier.isEmpty() || identifier.contains('/')) {
        return {};
    }
    const auto name = iconNameOf(identifier);
    return name.startsWith('/') ? QIcon(name) : QIcon::fromTheme(name);
}

/// The first letter as people see it, which may be several code points.
QString firstLetter(const QString& name) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, name);
    return name.left(std::max<qsizetype>(finder.toNextBoundary(), 0)).toUpper();
}

/// The same for a name in every run.
QColor tileColor(const QString& name) {
    unsigned int sum = 0;
    for (const auto character : name) {
        sum = sum * 31 + character.unicode();
    }
    return {tileColors.at(sum % tileColors.size())};
}

QPixmap tile(const QString& name, int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tileColor(name));
    painter.drawRoundedRect(pixmap.rect(), size * 0.22, size * 0.22);
    auto font = Theme::Typography::font(Theme::Typography::section);
    font.setPixelSize(std::max(1, qRound(size * 0.56)));
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(pixmap.rect(), Qt::AlignCenter, firstLetter(name));
    return pixmap;
}

} // namespace

ApplicationIconProvider::ApplicationIconProvider() : QQuickImageProvider(QQuickImageProvider::Pixmap) {}

QPixmap ApplicationIconProvider::requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) {
    const auto slash = id.indexOf('/');
    const auto identifier = QUrl::fromPercentEncoding(id.left(slash).toUtf8());
    const auto name = slash < 0 ? identifier : QUrl::fromPercentEncoding(id.mid(slash + 1).toUtf8());
    const int wanted = std::max(requestedSize.width(), requestedSize.height());
    const int side = wanted > 0 ? std::min(wanted, 1024) : usualSize;
    auto pixmap = iconOf(identifier).pixmap(QSize(side, side), 1);
    if (pixmap.isNull()) {
        pixmap = tile(name, side);
    }
    *size = pixmap.size();
    return pixmap;
}

} // namespace cindertop::ui
