#pragma once

#include "Platform/DesktopAppearance.h"

#include <memory>

/// How the system looks to the application as a whole. Main thread only.
class AppKitAppearance : public DesktopAppearance {
    Q_OBJECT

public:
    explicit AppKitAppearance(QObject *parent = nullptr);
    ~AppKitAppearance() override;

    bool isDark() const override;
    /// 1: the system has no such factor for its programs.
    double textScale() const override { return 1.0; }
    bool reducesMotion() const override;
    SystemColors systemColors() const override;
    QImage symbol(const QString &name, double pointSize, double scale) const override;

private:
    struct Objects;
    std::unique_ptr<Objects> m_objects;
};
