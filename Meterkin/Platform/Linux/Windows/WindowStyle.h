#pragma once

#include "Platform/Linux/X11/Connection.h"
#include "Platform/WindowStyle.h"

/// Windows on a Linux desktop.
class LinuxWindowStyle : public QObject, public WindowStyle {
    Q_OBJECT

public:
    /// The connection outlives it and may be closed.
    explicit LinuxWindowStyle(X11Connection &connection, QObject *parent = nullptr);

    void makeTitled(QQuickWindow &window) override;
    TitleBar makeOnboarding(QQuickWindow &window) override;
    void present(QQuickWindow &window) override;
    void presentUnasked(QQuickWindow &window) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isOnPresentWorkspace(const QQuickWindow &window) const;
    void colorTitleBar(QQuickWindow &window);
    void demandFocus(const QQuickWindow &window);

    X11Connection &m_connection;
};
