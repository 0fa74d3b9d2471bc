#pragma once

#include "Platform/StatusItem.h"

#include <QtGui/qwindowdefs.h>

#include <memory>
#include <optional>

/// The item in the system's menu bar, from construction to destruction. Main thread only.
class AppKitStatusItem : public StatusItem {
    Q_OBJECT

public:
    explicit AppKitStatusItem(QObject *parent = nullptr);
    ~AppKitStatusItem() override;

    bool hasButton() const override;
    /// Invalid without a button: each one has an appearance of its own.
    QColor systemColor(SystemColor color) const override;
    /// A title in one of the three system colours follows the menu bar's appearance by itself.
    void setTitle(const AttributedTitle &title) override;
    void setAccessibilityLabel(const QString &label) override;
    void setToolTip(const QString &text) override;
    /// Empty: a popover is shown beside button().
    QRect geometry() const override { return {}; }

    /// The button's view, owned by the item; 0 when there is none.
    WId button() const;

private:
    struct Objects;
    std::unique_ptr<Objects> m_objects;
    std::optional<AttributedTitle> m_title;
};
