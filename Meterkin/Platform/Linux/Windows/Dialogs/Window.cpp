#include "Platform/Linux/Windows/Dialogs/Window.h"

#include "Platform/DesktopAppearance.h"
#include "Platform/Linux/Process/Memory.h"
#include "Platform/WindowStyle.h"
#include "Views/ApplicationIcon.h"
#include "Views/ViewEngine.h"
#include "Views/WindowContent.h"

#include <QIcon>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Meterkin_DialogsPlugin)

DialogWindow::DialogWindow(const QString &view, const QVariantMap &properties, const QString &title,
                           WindowStyle &style, const DesktopAppearance &appearance, QObject *parent)
    : QObject(parent)
    , m_style(style)
    , m_engine(std::make_unique<ViewEngine>())
    , m_window(std::make_unique<QQuickWindow>())
{
    m_engine->appearance()->follow(appearance);

    std::unique_ptr<QQuickItem> content =
        m_engine->create(QStringLiteral("Dialogs/") + view, properties);
    m_isMade = content != nullptr;
    if (!m_isMade)
        return;
    m_window->setTitle(title);
    m_window->setIcon(applicationIcon());
    m_style.makeTitled(*m_window);
    followColor(*m_window, *content);
    connect(content.get(), SIGNAL(closeRequested()), m_window.get(), SLOT(close()));
    connect(m_window.get(), SIGNAL(closing(QQuickCloseEvent *)), this, SIGNAL(closed()));
    fillWindow(*m_window, std::move(content), QSize());
}

DialogWindow::~DialogWindow()
{
    m_window->disconnect(this);
    m_window.reset(); // the view before its engine
    m_engine.reset();
    giveMemoryBackSoon();
}

void DialogWindow::present()
{
    if (m_isMade)
        m_style.present(*m_window);
    else
        QMetaObject::invokeMethod(this, &DialogWindow::closed, Qt::QueuedConnection);
}
