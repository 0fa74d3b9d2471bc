#pragma once

#include "Views/DrawnItem.h"

#include <QColor>
#include <QImage>
#include <QSvgRenderer>

/// A symbol in one colour, by its name ("gearshape", "arrow.up"); drawn by the system where it has
/// that symbol. Square, its size follows from the point size; centred in an item of another shape.
/// An unknown name draws nothing. Main thread only.
class SystemSymbol : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged FINAL)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged FINAL)
    /// The font size of the text beside it, in logical pixels.
    Q_PROPERTY(double pointSize READ pointSize WRITE setPointSize NOTIFY pointSizeChanged FINAL)
    /// Bolder, beside a bold text.
    Q_PROPERTY(bool isSemibold READ isSemibold WRITE setSemibold NOTIFY semiboldChanged FINAL)

public:
    explicit SystemSymbol(QQuickItem *parent = nullptr);

    QString name() const { return m_name; }
    void setName(const QString &name);
    QColor color() const { return m_color; }
    void setColor(const QColor &color);
    double pointSize() const { return m_pointSize; }
    void setPointSize(double size);
    bool isSemibold() const { return m_isSemibold; }
    void setSemibold(bool isSemibold);

    void paint(QPainter *painter) override;

signals:
    void nameChanged();
    void colorChanged();
    void pointSizeChanged();
    void semiboldChanged();

private:
    void load();
    void redraw();
    QImage picture(int side, double scale);
    void adoptPointSize();

    QSvgRenderer m_drawing; // that of the name
    QImage m_picture; // as last painted
    QString m_name;
    QColor m_color;
    double m_pointSize = 13.0;
    bool m_isSemibold = false;
};
