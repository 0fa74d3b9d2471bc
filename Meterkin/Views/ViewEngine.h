#pragma once

#include "Views/Appearance.h"
#include "Views/TypeRegistrations.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QVariantMap>

#include <memory>

/// The engine that the views live in. It outlives them. Main thread only.
class ViewEngine : private TypeRegistrations, public QQmlEngine {

public:
    explicit ViewEngine(QObject *parent = nullptr);

    Appearance *appearance() const { return m_appearance; }

    /// Makes a view, named by its file below the folder of its module, as in "Views/Theme", with
    /// its required properties. Null where a QML module that it imports is missing.
    std::unique_ptr<QQuickItem> create(const QString &view, const QVariantMap &properties);

private:
    Appearance *m_appearance = new Appearance(this); ///< a child: it outlives what QML made
};
