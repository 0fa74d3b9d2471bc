#include "Platform/DesktopAppearance.h"
#include "Platform/Linux/Display/Server.h"
#include "Platform/Linux/Updates/Session.h"
#include "Platform/Linux/Windows/Dialogs/InformationAlert.h"
#include "Platform/Linux/Windows/WindowStyle.h"
#include "Support/TestMain.h"

#include <QQuickItem>
#include <QtTest>

using namespace Qt::StringLiterals;
using Phase = UpdateSession::Phase;

static QQuickItem *view(const QWindow *window)
{
    return qobject_cast<const QQuickWindow *>(window)->contentItem()->childItems().first();
}

class DialogsTest : public QObject {
    Q_OBJECT

private slots:
    void alertsFollowEachOther()
    {
        LinuxInformationAlert alert(m_style, m_appearance);
        const auto windows = &QGuiApplication::topLevelWindows;
        alert.run(u"First"_s, u"<b>plain</b>"_s);
        alert.run(u"Second"_s, u"..."_s);
        for (const auto &[text, key] :
             {std::pair(u"First"_s, Qt::Key_Escape), {u"Second"_s, Qt::Key_Return}}) {
            QTRY_VERIFY(windows().size() == 1
                        && view(windows().first())->property("messageText") == text);
            QVERIFY(QTest::qWaitForWindowActive(windows().first()));
            QCOMPARE(windows().first()->modality(), Qt::ApplicationModal);
            QTest::keyClick(windows().first(), key);
        }
        QTRY_VERIFY(windows().isEmpty());
    }

    void passesRequestsOn()
    {
        // A key or button, and what is to be requested.
        for (const auto &[phase, requests] :
             {std::pair(Phase::Checking, u"Escape:cancel Return: cancel:cancel"_s),
              {Phase::Downloading, u"Escape:cancel Return:"_s},
              {Phase::Installing, u"Escape: cancel:"_s}, // cannot be cancelled
              {Phase::UpToDate, u"Escape:close Return:close dismiss:close"_s},
              {Phase::Offered, u"Escape:close Return:install action:install dismiss:close"_s},
              {Phase::Installed, u"Escape:close Return:restart dismiss:close"_s},
              {Phase::Failed, u"Escape:close Return:retry action:retry dismiss:close"_s}}) {
            for (const QString &request : requests.split(u' '))
                QCOMPARE(requestsAfter(phase, request.section(u':', 0, 0)), request);
        }
    }

    void boundsTextsOfServers()
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
            QVERIFY(dialog.window().width() < 450 && dialog.window().height() < 500);
        }
        for (const QQuickItem *text : view(&dialog.window())->findChildren<QQuickItem *>())
            if (text->property("text").toString().contains(u'<'))
                QCOMPARE(text->property("textFormat").toInt(), int(Qt::PlainText));
    }

private:
    QString requestsAfter(Phase phase, const QString &action)
    {
        UpdateSession session;
        QString made = action + u':';
        const auto note = [&](const QString &name) { return [&made, name] { made += name; }; };
        connect(&session, &UpdateSession::installRequested, this, note(u"install"_s));
        connect(&session, &UpdateSession::cancelRequested, this, note(u"cancel"_s));
        connect(&session, &UpdateSession::retryRequested, this, note(u"retry"_s));
        connect(&session, &UpdateSession::restartRequested, this, note(u"restart"_s));
        DialogWindow dialog(u"UpdateView"_s, {{u"session"_s, QVariant::fromValue(&session)}}, {},
                            m_style, m_appearance);
        connect(&dialog, &DialogWindow::closed, this, note(u"close"_s));
        dialog.present();
        if (!QTest::qWaitForWindowActive(&dialog.window()))
            return u"no window"_s;
        // The focus must not stay on a button of the phase before.
        session.bindablePhase().setValue(phase == Phase::Offered ? Phase::Failed : Phase::Offered);
        session.bindableIsCancellable().setValue(phase != Phase::Installing);
        session.bindablePhase().setValue(phase);
        dialog.window().grabWindow(); // lays out what has changed
        bool isKey = false;
        const int key =
            QMetaEnum::fromType<Qt::Key>().keyToValue("Key_" + action.toLatin1(), &isKey);
        if (isKey)
            QTest::keyClick(&dialog.window(), Qt::Key(key));
        else if (auto *button = view(&dialog.window())->findChild<QQuickItem *>(action))
            QTest::mouseClick(&dialog.window(), Qt::LeftButton, {},
                              button->mapToScene(button->boundingRect().center()).toPoint());
        return made;
    }

    struct PlainAppearance : DesktopAppearance {
        bool isDark() const override { return false; }
        double textScale() const override { return 1.0; }
    };

    DisplayServer m_displayServer;
    LinuxWindowStyle m_style{m_displayServer};
    PlainAppearance m_appearance;
};

METERKIN_TEST(DialogsTest);
#include "DialogsTest.moc"
