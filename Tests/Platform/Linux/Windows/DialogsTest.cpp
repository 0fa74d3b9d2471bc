#include "Platform/DesktopAppearance.h"
#include "Platform/Linux/Windows/Dialogs/InformationAlert.h"
#include "Platform/Linux/Windows/Dialogs/UpdateSession.h"
#include "Platform/WindowStyle.h"
#include "Support/TestMain.h"

#include <QQuickItem>
#include <QtTest>

using namespace Qt::StringLiterals;
using Phase = UpdateSession::Phase;

namespace {

struct PlainStyle : WindowStyle {
    void makeTitled(QQuickWindow &) override { }
    TitleBar makeOnboarding(QQuickWindow &) override { return TitleBar::System; }
    void present(QQuickWindow &window) override
    {
        window.show();
        window.requestActivate();
    }
    void presentUnasked(QQuickWindow &) override { }
};

struct PlainAppearance : DesktopAppearance {
    bool isDark() const override { return false; }
    double textScale() const override { return 1.0; }
};

QQuickWindow *onlyWindow()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return windows.size() == 1 ? qobject_cast<QQuickWindow *>(windows.first()) : nullptr;
}

QQuickItem *view(const QQuickWindow &window)
{
    return window.contentItem()->childItems().first();
}

} // namespace

class DialogsTest : public QObject {
    Q_OBJECT

private slots:
    void tellsOneAfterTheOther()
    {
        LinuxInformationAlert alert(m_style, m_appearance);
        alert.run(u"First"_s, u"<b>plain</b>"_s);
        alert.run(u"Second"_s, u"..."_s);
        alert.run(u"Third"_s, u"..."_s);
        for (const auto &[text, key] : {std::pair(u"First"_s, Qt::Key_Escape),
                                        {u"Second"_s, Qt::Key_Return},
                                        {u"Third"_s, Qt::Key_Space}}) {
            QTRY_VERIFY(onlyWindow() && view(*onlyWindow())->property("messageText") == text);
            QQuickWindow &window = *onlyWindow();
            QVERIFY(QTest::qWaitForWindowActive(&window));
            QCOMPARE(window.modality(), Qt::ApplicationModal);
            QCOMPARE(window.minimumSize(), window.maximumSize());
            QTest::keyClick(&window, key);
        }
        QTRY_VERIFY(QGuiApplication::topLevelWindows().isEmpty());
        alert.run(u"Anew"_s, {});
        QVERIFY(onlyWindow());
    }

    void passesOnWhatTheUserWants_data()
    {
        QTest::addColumn<Phase>("phase");
        QTest::addColumn<QString>("action"); // a key or a button
        QTest::addColumn<QString>("wishes");
        QTest::addColumn<bool>("cancellable");
        const auto row = [](Phase phase, const QString &action, const QString &wishes,
                            bool cancellable = true) {
            QTest::addRow("%s, %s %d", QMetaEnum::fromType<Phase>().valueToKey(int(phase)),
                          qPrintable(action), cancellable)
                << phase << action << wishes << cancellable;
        };
        row(Phase::Installing, u"Escape"_s, {}, false);
        row(Phase::Installing, u"cancel"_s, {}, false);
        for (const Phase running : {Phase::Checking, Phase::Downloading, Phase::Installing}) {
            row(running, u"Escape"_s, u"cancel"_s);
            row(running, u"Return"_s, {});
            row(running, u"cancel"_s, u"cancel"_s);
        }
        for (const Phase ended :
             {Phase::UpToDate, Phase::Offered, Phase::Installed, Phase::Failed}) {
            row(ended, u"Escape"_s, u"close"_s);
            row(ended, u"dismiss"_s, u"close"_s);
        }
        row(Phase::UpToDate, u"Return"_s, u"close"_s);
        for (const QString &action : {u"Return"_s, u"Space"_s, u"action"_s}) {
            row(Phase::Offered, action, u"install"_s);
            row(Phase::Installed, action, u"restart"_s);
            row(Phase::Failed, action, u"retry"_s);
        }
    }
    void passesOnWhatTheUserWants()
    {
        QFETCH(const Phase, phase);
        QFETCH(const QString, action);
        QFETCH(const bool, cancellable);
        UpdateSession session;
        QStringList wishes;
        const auto note = [&wishes](const QString &wish) { return [&, wish] { wishes << wish; }; };
        connect(&session, &UpdateSession::installRequested, this, note(u"install"_s));
        connect(&session, &UpdateSession::cancelRequested, this, note(u"cancel"_s));
        connect(&session, &UpdateSession::retryRequested, this, note(u"retry"_s));
        connect(&session, &UpdateSession::restartRequested, this, note(u"restart"_s));
        DialogWindow dialog(u"UpdateView"_s, {{u"session"_s, QVariant::fromValue(&session)}}, {},
                            m_style, m_appearance);
        connect(&dialog, &DialogWindow::closed, this, note(u"close"_s));
        dialog.present();
        QVERIFY(QTest::qWaitForWindowActive(&dialog.window()));
        // On its way there it has been through another phase and had its button pressed.
        session.bindablePhase().setValue(phase == Phase::Offered ? Phase::Failed : Phase::Offered);
        session.bindableIsCancellable().setValue(cancellable);
        session.bindablePhase().setValue(phase);

        act(dialog.window(), action);
        QTEST(wishes.join(u' '), "wishes");
    }

    void boundsWhatComesFromOutside()
    {
        UpdateSession session;
        session.bindableOfferedVersion().setValue(u"<img src=x>"_s + QString(300, u'9'));
        session.bindableNotes().setValue(u"<h1>line</h1>\n"_s.repeated(5'000));
        session.bindableProblem().setValue(u"no "_s.repeated(2'000));
        DialogWindow dialog(u"UpdateView"_s, {{u"session"_s, QVariant::fromValue(&session)}}, {},
                            m_style, m_appearance);
        dialog.present();
        for (const Phase phase : {Phase::Offered, Phase::Failed}) {
            session.bindablePhase().setValue(phase);
            dialog.window().grabWindow();
            QCOMPARE(dialog.window().width(), 440);
            QVERIFY(dialog.window().height() < 500);
        }
        for (const QQuickItem *text : view(dialog.window())->findChildren<QQuickItem *>())
            if (text->property("text").toString().contains(u'<'))
                QCOMPARE(text->property("textFormat").toInt(), int(Qt::PlainText));
    }

private:
    static void act(QQuickWindow &window, const QString &action)
    {
        window.grabWindow(); // lays out what has changed
        const auto keys = QMetaEnum::fromType<Qt::Key>();
        bool isKey = false;
        const int key = keys.keyToValue("Key_" + action.toLatin1(), &isKey);
        if (isKey)
            return QTest::keyClick(&window, Qt::Key(key));
        auto *const button = view(window)->findChild<QQuickItem *>(action);
        const QPointF centre = button->mapToScene(button->boundingRect().center());
        QTest::mouseClick(&window, Qt::LeftButton, {}, centre.toPoint());
    }

    PlainStyle m_style;
    PlainAppearance m_appearance;
};

METERKIN_TEST(DialogsTest);
#include "DialogsTest.moc"
