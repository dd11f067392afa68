#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

namespace cindertop::ui {

/// One picture in every size that desktops ask for. Copies share the pixels.
struct StatusImage {
    QString themeName; ///< of the same picture in the icon themes, which the desktop tints; empty: none
    std::vector<QImage> sizes; ///< smallest first

    bool operator==(const StatusImage&) const = default;
};

/// The text beside the image.
struct StatusTitle {
    QString text;
    std::optional<QColor> color; ///< absent: that of the desktop's own labels
    double opacity;              ///< 0 to 1

    bool operator==(const StatusTitle&) const = default;
};

/// The program's place in the desktop's panel: a picture, perhaps a text, and what happens on a click.
/// Setting what is set already costs nothing. Main thread.
class StatusItem {
public:
    enum class ImagePosition { imageOnly, imageLeft };

    /// The point is where on the screen the user clicked; (0, 0) where the desktop does not say.
    using Action = std::function<void(const QPoint& point)>;

    virtual ~StatusItem() = default;
    virtual void setImage(const StatusImage& image) = 0;
    virtual void setToolTip(const QString& toolTip) = 0;
    virtual void setTitle(const std::optional<StatusTitle>& title) = 0;
    /// In points; absent: as long as what it shows.
    virtual void setLength(std::optional<int> length) = 0;
    virtual void setImagePosition(ImagePosition position) = 0;
    virtual void setAction(Action action) = 0;
};

} // namespace cindertop::ui
