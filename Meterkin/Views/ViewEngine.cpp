#include "Views/ViewEngine.h"

#include <QLoggingCategory>
#include <QQmlComponent>
#include <QtQml/qqmlextensionplugin.h>

#include <cstdio>
#include <cstdlib>

Q_IMPORT_QML_PLUGIN(Meterkin_ViewsPlugin)

ViewEngine::ViewEngine(QObject *parent)
    : QQmlEngine(parent)
{
    // Qt warns at every move of the caret in a spin box that it cannot tell screen readers.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.accessibility.atspi.warning=false"));
    addImportPath(QStringLiteral(":/"));
}

std::unique_ptr<QQuickItem> ViewEngine::create(const QString &view, const QVariantMap &properties)
{
    QQmlComponent component(this, QUrl(QStringLiteral("qrc:/Meterkin/%1.qml").arg(view)));
    if (!component.isError()) {
        QObject *made = component.createWithInitialProperties(properties);
        if (auto *item = qobject_cast<QQuickItem *>(made))
            return std::unique_ptr<QQuickItem>(item);
    }
    std::fprintf(stderr, "Fatal error: no view %s: %s\n", qPrintable(view),
                 qPrintable(component.errorString()));
    std::abort();
}
