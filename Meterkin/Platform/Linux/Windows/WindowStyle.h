#pragma once

#include "Platform/WindowStyle.h"

#include <QObject>

class DisplayServer;

/// Windows on a Linux desktop.
class LinuxWindowStyle : public QObject, public WindowStyle {
    Q_OBJECT

public:
    /// The server outlives it.
    explicit LinuxWindowStyle(DisplayServer &displayServer, QObject *parent = nullptr);

    void makeTitled(QQuickWindow &window) override;
    TitleBar makeOnboarding(QQuickWindow &window) override;
    void present(QQuickWindow &window) override;
    void presentUnasked(QQuickWindow &window) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isOnPresentWorkspace(const QQuickWindow &window) const;
    void colorTitleBar(QQuickWindow &window);

    DisplayServer &m_displayServer;
};
