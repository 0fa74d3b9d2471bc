#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QImage>

/// A font whose characters are measured and drawn once, since a title changes often and its letters
/// do not. All digits get the same width, whatever the font says. Device pixels; main thread only.
class GlyphSet {
public:
    explicit GlyphSet(const QFont &font);

    int width(QStringView text);
    int capHeight() const { return m_capHeight; }
    /// Draws into an image of premultiplied ARGB, clipped to its edges.
    void draw(QImage &image, QStringView text, QPoint baseline, const QColor &color);

private:
    int advance(QChar character);
    const QImage &mask(QChar character);

    QFont m_font;
    QFontMetricsF m_metrics;
    int m_capHeight;
    int m_digitWidth = 0;
    QHash<QChar, int> m_advances;
    QHash<QChar, QImage> m_masks; ///< coverage; the baseline is the ascent below the top
};
