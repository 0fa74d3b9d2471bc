#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>

/// Whether the item's window can be seen, as far as the system tells: shown, not minimised and not
/// on another workspace. Main thread only.
class WindowSight : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isSeen READ isSeen NOTIFY isSeenChanged FINAL)

public:
    using QQuickItem::QQuickItem;

    bool isSeen() const { return m_isSeen; }

signals:
    void isSeenChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void look();

    QPointer<QQuickWindow> m_window;
    bool m_isSeen = false;
};
