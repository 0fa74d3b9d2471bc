#include "Views/Appearance.h"

#include "Views/ViewEngine.h"

Appearance *Appearance::create(QQmlEngine *engine, QJSEngine *)
{
    Appearance *appearance = static_cast<ViewEngine *>(engine)->appearance();
    QJSEngine::setObjectOwnership(appearance, QJSEngine::CppOwnership);
    return appearance;
}

void Appearance::follow(const DesktopAppearance &desktop)
{
    m_desktop = &desktop;
    connect(&desktop, &DesktopAppearance::changed, this, &Appearance::take);
    take();
}

void Appearance::take()
{
    m_dark = m_desktop->isDark();
    m_textScale = m_desktop->textScale();
    m_reducesMotion = m_desktop->reducesMotion();
    m_systemColors = m_desktop->systemColors();
}

QImage Appearance::symbol(const QString &name, double pointSize, bool isSemibold,
                          double scale) const
{
    return m_desktop ? m_desktop->symbol(name, pointSize, isSemibold, scale) : QImage();
}
