#include "Views/Controls/Scrolling.h"

#include <algorithm>

namespace {

constexpr double Margin = 28.0;

} // namespace

double Scrolling::revealing(QQuickItem *item, QQuickItem *content, double contentY,
                            double height) const
{
    if (item == nullptr || content == nullptr || !content->isAncestorOf(item))
        return contentY;
    const double top = item->mapToItem(content, {0.0, 0.0}).y() - Margin;
    const double bottom = top + item->height() + 2 * Margin;
    const double end = std::max(0.0, content->height() - height);
    return std::clamp(std::clamp(contentY, std::min(bottom - height, top), top), 0.0, end);
}
