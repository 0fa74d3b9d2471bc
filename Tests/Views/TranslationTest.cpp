#include "Model/SettingsViewModel.h"
#include "Services/HotkeyRecorder.h"
#include "Support/ScriptedDashboard.h"
#include "Support/ScriptedServices.h"
#include "Support/ScriptedStore.h"
#include "Support/ShownView.h"
#include "Support/TestMain.h"
#include "Updates/UpdaterController.h"

#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

/// Where a text is painted, whatever the size of its item.
QRectF paintedPart(const QQuickItem &text)
{
    const double width = text.property("contentWidth").toDouble();
    const double left = text.property("leftPadding").toDouble();
    const double room = text.width() - left - text.property("rightPadding").toDouble() - width;
    const int alignment = text.property("effectiveHorizontalAlignment").toInt();
    const double x = alignment == Qt::AlignLeft ? 0.0
        : alignment == Qt::AlignRight           ? room
                                                : room / 2;
    return {left + x, 0.0, width, text.height()};
}

/// What of a view must not meet: texts and controls.
QList<QRectF> placesIn(const QQuickItem &item)
{
    QList<QRectF> places;
    if (!item.isVisible() || item.opacity() == 0.0)
        return places;
    if (item.inherits("QQuickText") && !item.property("text").toString().isEmpty())
        places << item.mapRectToScene(paintedPart(item));
    else if (item.inherits("QQuickControl") || item.inherits("QQuickTextInput"))
        places << item.mapRectToScene(item.boundingRect());
    if (places.isEmpty())
        for (const QQuickItem *child : item.childItems())
            places << placesIn(*child);
    return places;
}

} // namespace

class TranslationTest : public QObject {
    Q_OBJECT

private slots:
    void germanFits()
    {
        QTranslator german;
        QVERIFY(german.load(u":/translations/meterkin_de"_s));
        QCoreApplication::installTranslator(&german);
        forEachPage([](const QQuickItem &page, const QString &name) {
            const QList<QRectF> places = placesIn(page);
            QVERIFY(places.size() > 3);
            for (const QRectF &place : places) {
                QVERIFY2(page.boundingRect().contains(place), qPrintable(name));
                for (const QRectF &other : places)
                    QVERIFY2(&other == &place || !other.intersects(place), qPrintable(name));
            }
        });
    }

    void mirrors()
    {
        QMap<QString, QList<QRectF>> places;
        forEachPage([&](const QQuickItem &page, const QString &name) {
            for (QRectF place : placesIn(page)) {
                place.moveLeft(page.width() - place.right());
                places[name] << place;
            }
        });
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
        forEachPage([&](const QQuickItem &page, const QString &name) {
            const QList<QRectF> mirrored = placesIn(page);
            QCOMPARE(mirrored.size(), places[name].size());
            for (qsizetype i = 0; i < mirrored.size(); ++i) {
                const QPointF distance = mirrored[i].topLeft() - places[name][i].topLeft();
                QVERIFY2(distance.manhattanLength() <= 1.0,
                         qPrintable(name + u' ' + QString::number(i)));
            }
        });
    }

    void cleanup() { QGuiApplication::setLayoutDirection(Qt::LayoutDirectionAuto); }

private:
    using Look = std::function<void(const QQuickItem &page, const QString &name)>;

    static void forEachPage(const Look &look)
    {
        const Vitals vitals{.fanSpeed = 1850.0, .memory = 50.0, .fans = 2, .fanRange = 6000.0};
        ScriptedDashboard machine(vitals);
        machine.report(vitals);
        ScriptedStore store;
        SettingsViewModel settings(store);
        ScriptedUpdateFramework framework;
        UpdaterController updates(framework, store, {}, {});
        ScriptedKeyDownMonitor monitor;
        ScriptedHotkeyRegistrar registrar;
        HotkeyRecorder recorder(settings, {monitor, registrar});
        settings.setHotkeyKeyCode(46);
        const auto known = QVariant::fromValue(&settings);
        showPages(
            u"Dashboard"_s, 1,
            {{u"viewModel"_s, QVariant::fromValue(&machine.dashboard())}, {u"settings"_s, known}},
            look);
        showPages(u"Settings"_s, 4,
                  {{u"settings"_s, known},
                   {u"fanCount"_s, 0},
                   {u"updaterController"_s, QVariant::fromValue(&updates)},
                   {u"recorder"_s, QVariant::fromValue(&recorder)},
                   {u"version"_s, u"1"_s},
                   {u"projectLink"_s, QUrl(u"https://example.org"_s)}},
                  look);
        showPages(u"Onboarding"_s, 2, {{u"computerWord"_s, u"Computer"_s}}, look);
    }

    static void showPages(const QString &name, int pages, const QVariantMap &given,
                          const Look &look)
    {
        ShownView shown(u"Views/%1/%1View"_s.arg(name), given);
        shown.engine.appearance()->setReducesMotion(true);
        for (int page = 0; page < pages; ++page) {
            shown.view->setProperty(name == u"Settings" ? "selectedTab" : "currentScreen", page);
            for (const char *part : {"appeared", "titleVisible", "bullet1Visible", "bullet2Visible",
                                     "bullet3Visible", "buttonVisible", "headlineVisible",
                                     "subtextVisible", "previewVisible", "button2Visible"})
                shown.view->setProperty(part, true); // of the welcome
            QCoreApplication::processEvents();
            shown.window.grabWindow(); // lays out what has changed
            look(*shown.view, name + u' ' + QString::number(page));
        }
    }
};

METERKIN_TEST(TranslationTest);
#include "TranslationTest.moc"
