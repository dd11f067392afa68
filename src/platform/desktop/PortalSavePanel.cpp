#include "platform/desktop/PortalSavePanel.h"

#include "platform/desktop/PortalRequest.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QList>
#include <QRandomGenerator>
#include <QStringList>
#include <QUrl>
#include <utility>

namespace cindertop::desktop {

/// Which names a filter lets through.
struct FilterPattern {
    uint kind = 0; ///< 0: a pattern of file names
    QString text;
};

struct FileFilter {
    QString name;
    QList<FilterPattern> patterns;
};

// Qt's marshalling finds these operators by the types' namespace; it never reads what is only sent.

QDBusArgument& operator<<(QDBusArgument& argument, const FilterPattern& pattern) {
    argument.beginStructure();
    argument << pattern.kind << pattern.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, FilterPattern& pattern) {
    argument.beginStructure();
    argument >> pattern.kind >> pattern.text;
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): Qt wants it so
}

QDBusArgument& operator<<(QDBusArgument& argument, const FileFilter& filter) {
    argument.beginStructure();
    argument << filter.name << filter.patterns;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, FileFilter& filter) {
    argument.beginStructure();
    argument >> filter.name >> filter.patterns;
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): Qt wants it so
}

namespace {

QVariant filtersOf(const SavePanel& panel) {
    qDBusRegisterMetaType<FilterPattern>();
    qDBusRegisterMetaType<QList<FilterPattern>>();
    qDBusRegisterMetaType<FileFilter>();
    qDBusRegisterMetaType<QList<FileFilter>>();
    const auto extension = QString::fromStdString(panel.fileNameExtension);
    return QVariant::fromValue(QList<FileFilter>{
        {.name = extension.toUpper(), .patterns = {{.kind = 0, .text = "*." + extension}}}});
}

/// Names of requests are never used again, even by the next program that gets this connection's name.
QString freshToken() {
    return "cindertop" + QString::number(QRandomGenerator::system()->generate64());
}

QDBusMessage saveFileCall(const SavePanel& panel, const QString& token) {
    auto call = QDBusMessage::createMethodCall(portalService, "/org/freedesktop/portal/desktop",
                                               "org.freedesktop.portal.FileChooser", "SaveFile");
    const QVariantMap options{{"handle_token", token},
                              {"modal", true},
                              {"current_name", QString::fromStdString(panel.proposedFileName)},
                              {"filters", filtersOf(panel)}};
    call.setArguments({QString(), QString::fromStdString(panel.title), options}); // no parent window
    return call;
}

/// The very name that was chosen: the panel has asked whether the file of that name may be replaced.
SaveChoice choiceOf(uint response, const QVariantMap& results) {
    const auto chosen = results.value("uris").toStringList();
    if (response != PortalRequest::succeeded || chosen.isEmpty()) {
        return {};
    }
    const QUrl address(chosen.front());
    if (!address.isLocalFile()) {
        return {.place = std::nullopt,
                .problem = "Only files of this machine can be written, and " +
                           address.toDisplayString().toStdString() + " is elsewhere."};
    }
    return {.place = address.toLocalFile().toStdString()};
}

} // namespace

PortalSavePanel::PortalSavePanel(QDBusConnection bus, Timers& timers, Fallback otherwise)
    : bus_(std::move(bus)), otherwise_(std::move(otherwise)), calls_(bus_, timers) {}

PortalSavePanel::~PortalSavePanel() = default;

void PortalSavePanel::useBus(const QDBusConnection& bus) {
    bus_ = bus;
    calls_.useBus(bus);
    for (auto& [number, open] : std::exchange(pending_, {})) {
        open.request.reset();
        open.completion(SaveChoice());
    }
}

void PortalSavePanel::choose(const SavePanel& panel, Completion completion) {
    const auto number = ++asked_;
    const auto token = freshToken();
    auto request = std::make_unique<PortalRequest>(bus_, token);
    QObject::connect(request.get(), &PortalRequest::answered, request.get(),
                     [this, number](uint response, const QVariantMap& results) {
                         finish(number, choiceOf(response, results));
                     });
    pending_[number] = {panel, std::move(completion), std::move(request)};
    calls_.send(saveFileCall(panel, token),
                [this, number](const BusCalls::Result& result) { takeHandle(number, result); });
}

void PortalSavePanel::takeHandle(std::uint64_t number, const BusCalls::Result& result) {
    const auto found = pending_.find(number);
    if (found == pending_.end()) { // the answer has overtaken the name
        return;
    }
    const auto path =
        result && !result->isEmpty() ? result->front().value<QDBusObjectPath>().path() : QString();
    if (!path.isEmpty()) {
        found->second.request->listenAt(path);
        return;
    }
    auto unasked = pending_.extract(found);
    unasked.mapped().request.reset();
    otherwise_(unasked.mapped().panel, std::move(unasked.mapped().completion));
}

void PortalSavePanel::finish(std::uint64_t number, const SaveChoice& choice) {
    auto answered = pending_.extract(number);
    if (answered) {
        answered.mapped().request.release()->deleteLater(); // it is the sender of this signal
        answered.mapped().completion(choice);
    }
}

} // namespace cindertop::desktop
