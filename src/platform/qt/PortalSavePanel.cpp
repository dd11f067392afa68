#include "platform/qt/PortalSavePanel.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QList>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QStringList>
#include <QUrl>
#include <system_error>
#include <utility>

namespace cindertop::desktop {

namespace {

/// Also what only looks like a file, such as a link to nowhere.
bool isTaken(const std::filesystem::path& file) {
    std::error_code ignored;
    return std::filesystem::exists(std::filesystem::symlink_status(file, ignored));
}

} // namespace

std::filesystem::path freeSavePlace(const std::string& fileName) {
    const std::filesystem::path documents =
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString();
    std::error_code ignored;
    const bool isThere = std::filesystem::is_directory(documents, ignored);
    return freeSavePlace(
        isThere ? documents
                : std::filesystem::path(
                      QStandardPaths::writableLocation(QStandardPaths::HomeLocation).toStdString()),
        fileName);
}

std::filesystem::path freeSavePlace(const std::filesystem::path& folder, const std::string& fileName) {
    const std::filesystem::path name(fileName);
    auto place = folder / name;
    for (int number = 2; isTaken(place); ++number) {
        place = folder / (name.stem().string() + " " + std::to_string(number) + name.extension().string());
    }
    return place;
}

namespace {

constexpr auto requestInterface = "org.freedesktop.portal.Request";

QString requestPath(const QDBusConnection& bus, const QString& token) {
    auto sender = bus.baseService();
    sender.remove(0, 1).replace('.', '_');
    return "/org/freedesktop/portal/desktop/request/" + sender + '/' + token;
}

} // namespace

PortalRequest::PortalRequest(QDBusConnection bus, const QString& token)
    : bus_(std::move(bus)), portal_(portalService, bus_, QDBusServiceWatcher::WatchForUnregistration) {
    connect(&portal_, &QDBusServiceWatcher::serviceUnregistered, this, [this] { take(ended, {}); });
    listenAt(requestPath(bus_, token));
}

PortalRequest::~PortalRequest() {
    if (!isAnswered_) {
        auto close = QDBusMessage::createMethodCall(portalService, path_, requestInterface, "Close");
        close.setAutoStartService(false);
        bus_.send(close);
    }
}

void PortalRequest::listenAt(const QString& path) {
    if (path == path_) {
        return;
    }
    const auto* const slot = SLOT(take(uint, QVariantMap));
    if (!path_.isEmpty()) {
        bus_.disconnect(portalService, path_, requestInterface, "Response", this, slot);
    }
    path_ = path;
    bus_.connect(portalService, path_, requestInterface, "Response", this, slot);
}

void PortalRequest::take(uint response, const QVariantMap& results) {
    if (!std::exchange(isAnswered_, true)) {
        Q_EMIT answered(response, results);
    }
}

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
    finished_.reset();
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
        finished_ = std::move(answered.mapped().request); // it is the sender of this signal
        answered.mapped().completion(choice);
    }
}

} // namespace cindertop::desktop
