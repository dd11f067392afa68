#pragma once

#include "ui/windows/ViewsFactory.h"

#include <QObject>

namespace cindertop::ui {

/// What the program finds in the library of the windows.
class ViewsPlugin final : public QObject, public ViewsFactory {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID CINDERTOP_VIEWS_INTERFACE)
    Q_INTERFACES(cindertop::ui::ViewsFactory)

public:
    std::unique_ptr<Views> makeViews(const Appearance& appearance) override;
};

} // namespace cindertop::ui
