#include "ui/views/ViewsPlugin.h"

#include "ui/views/QuickViews.h"

namespace cindertop::ui {

std::unique_ptr<Views> ViewsPlugin::makeViews(const Appearance& appearance) {
    return makeQuickViews(appearance);
}

} // namespace cindertop::ui
