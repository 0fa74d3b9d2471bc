#include "Translation.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

#include <memory>

namespace {

//: Which way the language is written: RTL (right to left) or LTR.
[[maybe_unused]] constexpr const char *Direction = // Qt asks for it and mirrors the windows
    QT_TRANSLATE_NOOP("QGuiApplication", "QT_LAYOUT_DIRECTION");

} // namespace

void loadTranslation()
{
    const QLocale system = QLocale::system();
    if (system.language() == QLocale::C)
        return; // as all programs, whatever else LANGUAGE lists
    const QStringList languages = system.uiLanguages();
    for (const QString &language : languages) {
        if (language.section(u'-', 0, 0) == u"en")
            return; // needs no catalogue, and comes before the languages after it
        auto translator = std::make_unique<QTranslator>();
        // Of "de_AT" Qt tries "de", too.
        if (translator->load(QStringLiteral("meterkin_") + QString(language).replace(u'-', u'_'),
                             QStringLiteral(":/translations"))) {
            translator->setParent(qApp);
            QCoreApplication::installTranslator(translator.release());
            return;
        }
    }
}
