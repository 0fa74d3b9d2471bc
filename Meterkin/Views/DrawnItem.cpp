#include "Views/DrawnItem.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGRenderNode>
#include <QSGRendererInterface>

namespace {

class DrawingNode : public QSGRenderNode {
public:
    explicit DrawingNode(DrawnItem &item)
        : m_item(item)
    {
    }

    void update()
    {
        // What is moved to whole pixels may reach beyond the item.
        m_rect = m_item.boundingRect().adjusted(-1, -1, 1, 1);
        markDirty(DirtyGeometry);
    }
    void render(const RenderState *state) override
    {
        QQuickWindow *window = m_item.window();
        auto *painter = static_cast<QPainter *>(window->rendererInterface()->getResource(
            window, QSGRendererInterface::PainterResource));
        if (painter == nullptr)
            return;
        painter->setClipRegion(*state->clipRegion());
        painter->setTransform(matrix()->toTransform());
        painter->setOpacity(inheritedOpacity());
        painter->setRenderHint(QPainter::Antialiasing);
        m_item.paint(painter);
    }
    RenderingFlags flags() const override { return BoundedRectRendering; }
    QRectF rect() const override { return m_rect; }

private:
    DrawnItem &m_item; // outlives its node
    QRectF m_rect;
};

} // namespace

DrawnItem::DrawnItem(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

QSGNode *DrawnItem::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    auto *drawing = node != nullptr ? static_cast<DrawingNode *>(node) : new DrawingNode(*this);
    drawing->update();
    return drawing;
}
