#pragma once

#include "Platform/StatusItem.h"

#include <QtGui/qwindowdefs.h>

#include <memory>
#include <optional>

/// The item in the system's menu bar, from construction to destruction. Main thread only.
class MacStatusItem : public StatusItem {
    Q_OBJECT

public:
    explicit MacStatusItem(QObject *parent = nullptr);
    ~MacStatusItem() override;

    bool hasButton() const override;
    /// Invalid without a button, whose appearance decides the colour.
    QColor systemColor(SystemColor color) const override;
    /// A title in one of the system colours keeps following the menu bar's appearance.
    void setTitle(const AttributedTitle &title) override;
    void setAccessibilityLabel(const QString &label) override;
    void setToolTipSource(std::function<QString()> source) override;
    void refreshToolTip() override;
    std::optional<std::chrono::seconds> toolTipPeriod() const override
    {
        return std::chrono::seconds(0); // the button keeps it
    }
    /// Empty: the popover anchors to button() instead.
    QRect geometry() const override { return {}; }

    /// The button's view, owned by the item; 0 when there is none.
    WId button() const;

private:
    struct Objects;
    std::unique_ptr<Objects> m_objects;
    std::optional<AttributedTitle> m_title;
    std::function<QString()> m_toolTipSource;
};
