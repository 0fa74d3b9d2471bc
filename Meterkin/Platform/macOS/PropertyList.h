#pragma once

#include <QByteArray>
#include <QVariant>

/// What a property list in any of the system's formats holds; invalid when it is none, or holds
/// nothing that Qt has a value for. Any thread.
QVariant propertyList(const QByteArray &data);
