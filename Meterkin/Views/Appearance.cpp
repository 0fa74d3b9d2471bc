#include "Views/Appearance.h"

#include "Views/ViewEngine.h"

Appearance *Appearance::create(QQmlEngine *engine, QJSEngine *)
{
    Appearance *appearance = static_cast<ViewEngine *>(engine)->appearance();
    QJSEngine::setObjectOwnership(appearance, QJSEngine::CppOwnership);
    return appearance;
}
