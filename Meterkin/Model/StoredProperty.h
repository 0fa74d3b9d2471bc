#pragma once

#include "Model/SystemMetric.h"
#include "Platform/DefaultsStore.h"

#include <QBindable>
#include <QProperty>
#include <QString>

#include <cmath>

// How a setting is kept in the store.

void writeSetting(DefaultsStore &store, const QString &key, SystemMetric metric);
void writeSetting(DefaultsStore &store, const QString &key, double value);
void writeSetting(DefaultsStore &store, const QString &key, bool value);
void writeSetting(DefaultsStore &store, const QString &key, quint32 value);

/// A metric that is unknown reads as memory; an integer that does not fit ends the program.
template <typename Value> Value readSetting(const DefaultsStore &store, const QString &key);
template <> SystemMetric readSetting(const DefaultsStore &store, const QString &key);
template <> double readSetting(const DefaultsStore &store, const QString &key);
template <> bool readSetting(const DefaultsStore &store, const QString &key);
template <> quint32 readSetting(const DefaultsStore &store, const QString &key);

/// Notifies when the value differs and writes the store in any case.
template <typename Property, typename Value>
void assignSetting(Property &property, Value value, DefaultsStore &store, const QString &key)
{
    const Value before = property.valueBypassingBindings();
    bool isSame = before == value;
    // NaN equals NaN here: setting it again is no change.
    if constexpr (std::is_same_v<Value, double>)
        isSame = isSame || (std::isnan(before) && std::isnan(value));
    if (!isSame)
        property.setValue(value);
    // Not `value`: an observer may have set another one by now.
    writeSetting(store, key, property.valueBypassingBindings());
}

/// A setting as a property of a class. The class defines the setter. The bindable is read-only: a
/// value or binding set through it would not reach the store.
#define METERKIN_STORED_PROPERTY(Class, Type, name, Name)                                          \
public:                                                                                            \
    Q_PROPERTY(                                                                                    \
        Type name READ name WRITE set##Name NOTIFY name##Changed BINDABLE bindable##Name FINAL)    \
    Type name() const                                                                              \
    {                                                                                              \
        return m_##name.value();                                                                   \
    }                                                                                              \
    void set##Name(Type value);                                                                    \
    QBindable<Type> bindable##Name() const                                                         \
    {                                                                                              \
        return &m_##name;                                                                          \
    }                                                                                              \
    Q_SIGNAL void name##Changed();                                                                 \
                                                                                                   \
private:                                                                                           \
    Q_OBJECT_BINDABLE_PROPERTY(Class, Type, m_##name, &Class::name##Changed)
