#include "Platform/Linux/Tray/Notifier/Interface.h"

#include "Platform/Linux/Display/ActivationToken.h"

#include <array>
#include <utility>

namespace {

// The sizes that panels use, at scales 1 and 2.
constexpr std::array squareSides{22, 24, 32, 48, 64};

constexpr int WideHeight = 16; // logical pixels
constexpr int WideScale = 3; // still crisp after these panels have scaled it down

// Panels keep the tool tip until they are told of another one. It changes with each reading, and
// each signal makes them read it.
constexpr std::chrono::seconds ToolTipPeriod{5};
constexpr int ToolTipSlack = 300; // milliseconds, more than a coarse timer is early

} // namespace

const QString NotifierInterface::MenuPath = QStringLiteral("/StatusNotifierItem/Menu");

NotifierInterface::NotifierInterface(TitlePainter &painter, NotifierHostKind kind,
                                     const TrayContent &content, std::function<QString()> toolTip)
    : m_painter(painter)
    , m_kind(kind)
    , m_content(content)
    , m_toolTipSource(std::move(toolTip))
{
    registerNotifierTypes();
    m_toolTipDelay.setSingleShot(true);
    connect(&m_toolTipDelay, &QTimer::timeout, this, &NotifierInterface::refreshToolTip);
}

void NotifierInterface::setContent(const TrayContent &content)
{
    const TrayContent previous = std::exchange(m_content, content);
    const bool isRecoloured = previous.title.color != content.title.color;
    const bool isReworded = previous.title.text != content.title.text
        || previous.title.widestText != content.title.widestText;
    const bool hasLabel = m_kind == NotifierHostKind::Label;

    if (isRecoloured || (isReworded && !hasLabel))
        m_pixmaps.clear();
    // Panels that keep the accessible text read it again only with the picture, even where that is
    // the same as before, as beside a label.
    if (isRecoloured || isReworded || previous.accessibilityLabel != content.accessibilityLabel)
        emit NewIcon();
    if (isReworded && hasLabel)
        emit XAyatanaNewLabel(label(), labelGuide());
}

void NotifierInterface::refreshToolTip()
{
    if (!toolTipPeriod())
        return;
    if (!m_nextToolTip.hasExpired()) {
        if (!m_toolTipDelay.isActive()) // never too early
            m_toolTipDelay.start(static_cast<int>(m_nextToolTip.remainingTime()) + ToolTipSlack);
        return;
    }
    // To ask can bring new readings, and with them another call.
    if (m_toolTipSource() == m_toolTip || !m_nextToolTip.hasExpired())
        return;
    m_nextToolTip.setRemainingTime(ToolTipPeriod);
    emit NewToolTip();
}

void NotifierInterface::hide()
{
    m_status = QStringLiteral("Passive");
    emit NewStatus(m_status);
}

std::optional<std::chrono::seconds> NotifierInterface::toolTipPeriod() const
{
    const bool isShown = m_kind != NotifierHostKind::Label && m_kind != NotifierHostKind::Titled;
    return isShown ? std::optional(ToolTipPeriod) : std::nullopt;
}

QList<NotifierPixmap> NotifierInterface::iconPixmap()
{
    if (m_pixmaps.isEmpty())
        m_pixmaps = paint();
    return m_pixmaps;
}

QList<NotifierPixmap> NotifierInterface::paint() const
{
    const AttributedTitle &title = m_content.title;
    if (m_kind == NotifierHostKind::Wide) {
        return {NotifierPixmap::fromImage(m_painter.wide(title, WideHeight * WideScale, WideScale),
                                          title.color)};
    }
    QList<NotifierPixmap> pixmaps;
    for (const int side : squareSides) {
        const QImage image = m_kind == NotifierHostKind::Label ? m_painter.symbol(title.color, side)
                                                               : m_painter.square(title, side);
        pixmaps.append(m_kind == NotifierHostKind::Premultiplied
                           ? NotifierPixmap::fromImage(image)
                           : NotifierPixmap::fromImage(image, title.color));
    }
    return pixmaps;
}

NotifierToolTip NotifierInterface::toolTip()
{
    m_toolTip = m_toolTipSource();
    // A line feed breaks the line in every panel; a tag for it only in some.
    return {nothing(), {}, title(), m_toolTip.toHtmlEscaped()};
}

void NotifierInterface::Activate(int x, int y)
{
    emit activated(QPoint(x, y));
}

void NotifierInterface::SecondaryActivate(int x, int y)
{
    emit activated(QPoint(x, y));
}

void NotifierInterface::ContextMenu(int x, int y)
{
    emit contextMenuRequested(QPoint(x, y));
}

void NotifierInterface::Scroll(int, const QString &) { }

void NotifierInterface::ProvideXdgActivationToken(const QString &token)
{
    acceptActivationToken(token);
}
