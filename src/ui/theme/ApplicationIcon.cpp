#include "ui/theme/ApplicationIcon.h"

#include <QUrl>

namespace cindertop::ui {

QString applicationIconSource(const QString& identifier, const QString& name) {
    return "image://application/" + QString::fromLatin1(QUrl::toPercentEncoding(identifier)) + '/' +
           QString::fromLatin1(QUrl::toPercentEncoding(name));
}

QString applicationIconSource(const ProcessOffender& offender) {
    return applicationIconSource(QString::fromStdString(offender.bundleIdentifier.value_or("")),
                                 QString::fromStdString(offender.displayName));
}

} // namespace cindertop::ui
