#pragma once

#include "Platform/Linux/Tray/Host.h"
#include "Platform/Linux/Tray/Notifier/Types.h"
#include "Platform/Linux/Tray/Notifier/Watcher.h"
#include "Platform/Linux/Tray/Title/Painter.h"

#include <QDBusObjectPath>
#include <QDeadlineTimer>

#include <chrono>
#include <functional>
#include <optional>

/// The item on the bus: properties, slots and scriptable signals are those of
/// org.kde.StatusNotifierItem. Pictures are drawn when a panel reads them. Main thread only.
class NotifierInterface : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title CONSTANT)
    Q_PROPERTY(QString Status READ status NOTIFY NewStatus)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
    Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)
    Q_PROPERTY(QString IconThemePath READ nothing CONSTANT)
    Q_PROPERTY(QString IconName READ nothing CONSTANT)
    Q_PROPERTY(QString OverlayIconName READ nothing CONSTANT)
    Q_PROPERTY(QString AttentionIconName READ nothing CONSTANT)
    Q_PROPERTY(QString AttentionMovieName READ nothing CONSTANT)
    Q_PROPERTY(QList<NotifierPixmap> OverlayIconPixmap READ noPixmap CONSTANT)
    Q_PROPERTY(QList<NotifierPixmap> AttentionIconPixmap READ noPixmap CONSTANT)
    Q_PROPERTY(QList<NotifierPixmap> IconPixmap READ iconPixmap NOTIFY NewIcon)
    Q_PROPERTY(QString IconAccessibleDesc READ accessibleText NOTIFY NewIcon)
    Q_PROPERTY(NotifierToolTip ToolTip READ toolTip NOTIFY NewToolTip)
    Q_PROPERTY(QString XAyatanaLabel READ label NOTIFY XAyatanaNewLabel)
    Q_PROPERTY(QString XAyatanaLabelGuide READ labelGuide NOTIFY XAyatanaNewLabel)
    Q_PROPERTY(uint XAyatanaOrderingIndex READ orderingIndex CONSTANT)

public:
    static const QString MenuPath;

    /// The painter outlives it. The tool tip is asked for when a panel reads it.
    NotifierInterface(TitlePainter &painter, NotifierHostKind kind, const TrayContent &content,
                      std::function<QString()> toolTip);

    /// Tells the panel what looks different now.
    void setContent(const TrayContent &content);
    /// Tells the panel that the tool tip may be another one, if it has not been told just now.
    void refreshToolTip();
    /// Tells the panel to show it no longer, and for good.
    void hide();
    /// The shortest time from telling it to the next. Absent where the panel shows no tool tips.
    std::optional<std::chrono::seconds> toolTipPeriod() const;

    QString category() const { return QStringLiteral("Hardware"); }
    QString id() const { return QStringLiteral("meterkin"); }
    QString title() const { return QStringLiteral("meterkin"); }
    QString status() const { return m_status; }
    int windowId() const { return 0; }
    bool itemIsMenu() const { return false; }
    QDBusObjectPath menu() const { return QDBusObjectPath(MenuPath); }
    QString nothing() const { return QStringLiteral(""); }
    QList<NotifierPixmap> noPixmap() const { return {}; }
    QList<NotifierPixmap> iconPixmap();
    QString accessibleText() const { return m_content.accessibilityLabel; }
    NotifierToolTip toolTip();
    QString label() const { return m_content.title.text; }
    QString labelGuide() const { return m_content.title.widestText; }
    uint orderingIndex() const { return 0; }

    // NOLINTBEGIN(readability-identifier-naming): names on the bus
public slots:
    void Activate(int x, int y);
    void SecondaryActivate(int x, int y);
    void ContextMenu(int x, int y);
    void Scroll(int delta, const QString &orientation);
    void ProvideXdgActivationToken(const QString &token);

signals:
    Q_SCRIPTABLE void NewStatus(const QString &status);
    Q_SCRIPTABLE void NewIcon();
    Q_SCRIPTABLE void NewToolTip();
    Q_SCRIPTABLE void XAyatanaNewLabel(const QString &label, const QString &guide);
    // NOLINTEND(readability-identifier-naming)

    /// A click, with the position as the panel gave it: any numbers.
    void activated(QPoint position);
    void contextMenuRequested(QPoint position);

private:
    QList<NotifierPixmap> paint() const;

    TitlePainter &m_painter;
    const NotifierHostKind m_kind;
    QString m_status = QStringLiteral("Active");
    TrayContent m_content;
    QList<NotifierPixmap> m_pixmaps; ///< empty until a panel reads them
    std::function<QString()> m_toolTipSource;
    QString m_toolTip; ///< as the panel has read it
    QDeadlineTimer m_nextToolTip; ///< not before
    QTimer m_toolTipDelay;
};
