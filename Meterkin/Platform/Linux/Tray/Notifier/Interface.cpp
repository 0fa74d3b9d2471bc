#include "Platform/Linux/Tray/Notifier/Interface.h"

#include <array>
#include <utility>

namespace {

// The sizes that panels use, at scales 1 and 2.
constexpr std::array squareSides{22, 24, 32, 48, 64};

constexpr int WideHeight = 16; // logical pixels
constexpr int WideScale = 3; // still crisp after these panels have scaled it down

// The tool tip changes with each reading, and each signal makes panels read it. Most read it with
// the picture anyway; the others show one that is at most this old.
constexpr std::chrono::seconds ToolTipDelay{5};

} // namespace

const QString NotifierInterface::MenuPath = QStringLiteral("/StatusNotifierItem/Menu");

NotifierInterface::NotifierInterface(TitlePainter &painter, NotifierHostKind kind,
                                     const TrayContent &content)
    : m_painter(painter)
    , m_kind(kind)
    , m_content(content)
{
    registerNotifierTypes();
    m_toolTipDelay.setSingleShot(true);
    m_toolTipDelay.setTimerType(Qt::VeryCoarseTimer);
    m_toolTipDelay.setInterval(ToolTipDelay);
    connect(&m_toolTipDelay, &QTimer::timeout, this, &NotifierInterface::NewToolTip);
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

    if (previous.toolTip != content.toolTip && !m_toolTipDelay.isActive())
        m_toolTipDelay.start();
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
        return {
            NotifierPixmap::fromImage(m_painter.wide(title, WideHeight * WideScale, WideScale))};
    }
    QList<NotifierPixmap> pixmaps;
    for (const int side : squareSides) {
        pixmaps.append(NotifierPixmap::fromImage(m_kind == NotifierHostKind::Label
                                                     ? m_painter.symbol(title.color, side)
                                                     : m_painter.square(title, side)));
    }
    return pixmaps;
}

NotifierToolTip NotifierInterface::toolTip() const
{
    // A line feed breaks the line in every panel; a tag for it only in some.
    return {nothing(), {}, title(), m_content.toolTip.toHtmlEscaped()};
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

void NotifierInterface::ProvideXdgActivationToken(const QString &) { }
