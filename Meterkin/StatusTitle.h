#pragma once

#include "Model/SystemMetric.h"
#include "Model/ThresholdTier.h"
#include "Platform/Clock.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QTimer>

#include <optional>

class DashboardViewModel;
class SettingsViewModel;
class StatusItem;

/// What the status item shows: the chosen metric in the colour of its tier, which it blends into
/// when the tier changes. Main thread only.
class StatusTitle : public QObject {
    Q_OBJECT

public:
    /// All of them outlive it. The title is a dash until the first update.
    StatusTitle(StatusItem &item, const DashboardViewModel &dashboard,
                const SettingsViewModel &settings, MonotonicClock clock);

    /// To be called after every reading and after a change of the settings.
    void updateStatusItem();

private:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// The texts are made when one of these changes.
    struct Subject {
        SystemMetric metric;
        std::optional<double> number;
        bool operator==(const Subject &) const = default;
    };

    void showNoReading();
    void recolor();
    void makeTexts(const Subject &subject);
    QColor tierColor(ThresholdTier tier) const;
    void startColorAnimation(const QColor &from, const QColor &to);
    void animationStep();
    /// The blend of the running animation; nothing when none is running.
    std::optional<QColor> animatedColor() const;
    double secondsSince(TimePoint start) const;

    StatusItem &m_item;
    const DashboardViewModel &m_dashboard;
    const SettingsViewModel &m_settings;
    MonotonicClock m_clock;

    std::optional<Subject> m_subject;
    QString m_text;
    QString m_widestText;

    ThresholdTier m_previousTier = ThresholdTier::Green;
    QTimer m_animationTimer;
    QColor m_animationStartColor;
    QColor m_animationTargetColor;
    std::optional<TimePoint> m_animationStartTime;
};
