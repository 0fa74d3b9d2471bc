#include "StatusTitle.h"

#include "InterpolateColor.h"
#include "Model/DashboardViewModel.h"
#include "Model/MetricTraits.h"
#include "Model/SettingsViewModel.h"
#include "Platform/StatusItem.h"

#include <utility>

namespace {

constexpr double AnimationDuration = 0.5; // seconds
constexpr std::chrono::milliseconds AnimationPeriod{33}; // 30 steps a second

} // namespace

StatusTitle::StatusTitle(StatusItem &item, const DashboardViewModel &dashboard,
                         const SettingsViewModel &settings, MonotonicClock clock)
    : m_item(item)
    , m_dashboard(dashboard)
    , m_settings(settings)
    , m_clock(std::move(clock))
{
    m_animationTimer.setTimerType(Qt::PreciseTimer);
    m_animationTimer.setInterval(AnimationPeriod);
    connect(&m_animationTimer, &QTimer::timeout, this, &StatusTitle::animationStep);
    connect(&m_item, &StatusItem::colorsChanged, this, &StatusTitle::recolor);
    showNoReading();
}

void StatusTitle::showNoReading()
{
    if (m_item.hasButton())
        m_item.setTitle({QStringLiteral("-"), tierColor(ThresholdTier::Green),
                         widestText(m_settings.menuBarMetric())});
}

void StatusTitle::recolor()
{
    m_animationTargetColor = tierColor(m_previousTier);
    if (m_subject)
        updateStatusItem();
    else
        showNoReading();
}

void StatusTitle::updateStatusItem()
{
    if (!m_item.hasButton())
        return;
    const SystemMetric metric = m_settings.menuBarMetric();
    const std::optional<double> value = m_dashboard.currentValue(metric);
    const Subject subject{metric, shownNumber(value)};
    if (subject != m_subject)
        makeTexts(subject);
    const ThresholdTier tier = titleTier(value, m_settings.thresholds(metric));
    if (tier != m_previousTier) {
        // From what is shown now, so that a change in mid-animation does not jump.
        startColorAnimation(animatedColor().value_or(tierColor(m_previousTier)), tierColor(tier));
        m_previousTier = tier;
    }
    m_item.setTitle({m_text, animatedColor().value_or(tierColor(tier)), m_widestText});
}

void StatusTitle::makeTexts(const Subject &subject)
{
    m_subject = subject;
    m_text = valueText(subject.metric, subject.number);
    m_widestText = widestText(subject.metric);
    m_item.setAccessibilityLabel(QStringLiteral("meterkin: ") + m_text);
}

QColor StatusTitle::tierColor(ThresholdTier tier) const
{
    switch (tier) {
    case ThresholdTier::Green:
        return m_item.systemColor(SystemColor::Green);
    case ThresholdTier::Yellow:
        return m_item.systemColor(SystemColor::Yellow);
    case ThresholdTier::Red:
        return m_item.systemColor(SystemColor::Red);
    }
    Q_UNREACHABLE();
}

void StatusTitle::startColorAnimation(const QColor &from, const QColor &to)
{
    m_animationStartColor = from;
    m_animationTargetColor = to;
    m_animationStartTime = m_clock();
    m_animationTimer.start();
}

void StatusTitle::animationStep()
{
    if (!m_animationStartTime) {
        m_animationTimer.stop();
        return;
    }
    if (secondsSince(*m_animationStartTime) >= AnimationDuration) {
        m_animationTimer.stop();
        m_animationStartTime.reset();
    }
    updateStatusItem();
}

std::optional<QColor> StatusTitle::animatedColor() const
{
    if (!m_animationTimer.isActive() || !m_animationStartTime)
        return std::nullopt;
    return interpolateColor(m_animationStartColor, m_animationTargetColor,
                            secondsSince(*m_animationStartTime) / AnimationDuration);
}

double StatusTitle::secondsSince(TimePoint start) const
{
    return std::chrono::duration<double>(m_clock() - start).count();
}
