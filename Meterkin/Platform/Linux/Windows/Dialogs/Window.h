#pragma once

#include <QObject>
#include <QQuickWindow>
#include <QSize>
#include <QString>
#include <QVariantMap>

#include <memory>

class DesktopAppearance;
class ViewEngine;
class WindowStyle;

/// A small window around one view of this folder. Each has an engine of its own, so that nothing of
/// it stays in memory. Main thread only.
class DialogWindow : public QObject {
    Q_OBJECT

public:
    /// Hidden at first. Style and appearance outlive it.
    DialogWindow(const QString &view, const QVariantMap &properties, const QString &title,
                 WindowStyle &style, const DesktopAppearance &appearance,
                 QObject *parent = nullptr);
    ~DialogWindow() override;

    /// Shows it in the middle of the screen or brings it to the front. Where a part of Qt is
    /// missing it counts as closed, soon.
    void present();
    QQuickWindow &window() { return *m_window; }

signals:
    /// By the user, or by the view's `closeRequested()`. Delete it later, not in the slot.
    void closed();

private:
    WindowStyle &m_style;
    std::unique_ptr<ViewEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    bool m_isMade = false; ///< false where a part of Qt is missing
};
