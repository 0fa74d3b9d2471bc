#pragma once

#include "Platform/DesktopAppearance.h"

#include <memory>

/// The appearance that macOS gives the application. Main thread only.
class MacDesktopAppearance : public DesktopAppearance {
    Q_OBJECT

public:
    explicit MacDesktopAppearance(QObject *parent = nullptr);
    ~MacDesktopAppearance() override;

    bool isDark() const override;
    /// 1: macOS has no such factor.
    double textScale() const override { return 1.0; }
    bool reducesMotion() const override;
    SystemColors systemColors() const override;
    QImage symbol(const QString &name, double pointSize, bool isSemibold,
                  double scale) const override;

private:
    struct Objects;
    std::unique_ptr<Objects> m_objects;
};
