#include "Views/ViewEngine.h"

#include "Platform/Log.h"

#include <QQmlComponent>
#include <QQuickWindow>
#include <QtQml/qqmlextensionplugin.h>

#include <mutex>

Q_IMPORT_QML_PLUGIN(Meterkin_ViewsPlugin)

namespace {

/// A graphics driver takes more memory than the whole program, which draws once in seconds.
void chooseRenderer()
{
    static std::once_flag once; // Qt warns of a second time
    std::call_once(once, QQuickWindow::setGraphicsApi, QSGRendererInterface::Software);
}

} // namespace

ViewEngine::ViewEngine(QObject *parent)
    : QQmlEngine(parent)
{
    // Qt warns at every move of the caret in a spin box that it cannot tell screen readers.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.accessibility.atspi.warning=false"));
    chooseRenderer();
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
    qCWarning(logWindows, "No view %s: %s; its window stays closed", qPrintable(view),
              qPrintable(component.errorString().section(u'\n', 0, 0)));
    return nullptr;
}
