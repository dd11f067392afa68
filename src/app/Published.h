#pragma once

#include <QProperty>
#include <utility>

namespace cindertop {

/// A value that observers follow: they are told after each change, in the order in which values were set, and
/// not of an equal value. Main thread only.
template <typename Value>
class Published {
public:
    Published() = default;

    explicit Published(Value initial) : property_(std::move(initial)) {}

    decltype(auto) value() const { return property_.value(); }

    decltype(auto) operator*() const { return property_.value(); }

    const Value* operator->() const { return &property_.value(); }

    /// For bindings and observers; read only.
    QBindable<Value> bindable() const { return QBindable<Value>(&property_); }

    void set(Value value) { property_.setValue(std::move(value)); }

private:
    QProperty<Value> property_;
};

} // namespace cindertop
