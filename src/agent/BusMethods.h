#pragma once

#include "app/AppState.h"

#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <expected>

namespace cindertop::agent {

/// What a caller on the bus is told when a call cannot be carried out.
struct BusError {
    QString name; ///< "app.cindertop.Error.InvalidValue"
    QString message;
};

using BusAnswer = std::expected<QVariantList, BusError>;

/// The interface app.cindertop.Agent as data and calls, without the bus.
class BusMethods {
public:
    explicit BusMethods(AppState& state) : state_(state) {}

    /// The interface's part of the introspection, properties and annotations included.
    static QString introspection();

    BusAnswer call(const QString& method, const QString& signature, const QVariantList& arguments);

    /// All but the snapshot, which is long.
    QVariantMap properties() const;
    QString snapshot() const;

private:
    BusAnswer set(const QString& name, const QVariant& value);
    BusAnswer hasWindows() const;
    BusAnswer settings() const;
    BusAnswer exportDiagnostics(const QString& file);

    AppState& state_;
};

} // namespace cindertop::agent
