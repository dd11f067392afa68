#pragma once

#include "app/AppState.h"
#include "ui/tray/BusObject.h"

#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <functional>
#include <utility>

namespace cindertop::agent {

using ui::BusAnswer;
using ui::BusError;

/// What the bus's methods do besides what the program's state does. All are set.
struct BusActions {
    std::function<void()> open; ///< shows the window that the program opens with
    std::function<void()> quit; ///< ends the program after the caller has its answer
};

/// The interface app.cindertop.Agent as data and calls, without the bus.
class BusMethods {
public:
    BusMethods(AppState& state, BusActions actions) : state_(state), actions_(std::move(actions)) {}

    /// The interface's part of the introspection, properties and annotations included.
    static QString introspection();

    BusAnswer call(const QString& method, const QString& signature, const QVariantList& arguments);

    /// Calls what takes its time, and answers when it is done; false for every other method.
    bool startCall(const QString& method, const QString& signature,
                   std::function<void(const BusAnswer&)> answer);

    /// All but the snapshot, which is long.
    QVariantMap properties() const;
    /// Everything that the running program knows, as docs/json.md describes it: the machine as of the latest
    /// tick, with the advice. While nothing is measured, everything of the machine is null.
    QString snapshot() const;

private:
    BusAnswer set(const QString& name, const QVariant& value);
    BusAnswer hasWindows() const;
    BusAnswer settings() const;
    BusAnswer exportDiagnostics(const QString& file);

    AppState& state_;
    BusActions actions_;
};

} // namespace cindertop::agent
