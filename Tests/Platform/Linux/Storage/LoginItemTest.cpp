#include "Platform/Linux/Storage/LoginItem.h"
#include "Platform/Linux/Storage/AutostartText.h"
#include "Support/TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

enum class Call { Standing, Expressed, Unregister };

/// What stands in a test's files for our entry, our program, and one that is not there.
QByteArray filledIn(QByteArray text, const QString &program)
{
    return text.replace("@ours", autostartText(program))
        .replace("@moved", autostartText(QStringLiteral("/nonexistent/meterkin")))
        .replace("@program", program.toUtf8());
}

} // namespace

class LinuxLoginItemTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        qputenv("XDG_CONFIG_HOME", config().toUtf8());
        m_program = makeProgram(QStringLiteral("meterkin"));
    }
    void cleanup() { qunsetenv("XDG_CONFIG_HOME"); }

    void keepsWhatTheUserDid()
    {
        const auto edited = [](const QByteArray &more) {
            return "# mine\n[Desktop Entry]\n" + more
                + "Name = M\r\nExec=env A=b @program -x\n\n[Other]\nHidden=true";
        };
        const auto gnome = [](const QByteArray &value) {
            return "[Desktop Entry]\nExec=\"@program\"\nX-GNOME-Autostart-enabled = " + value
                + " \r\n";
        };
        const auto twice = [](const QByteArray &value) {
            return "[Desktop Entry]\nHidden=" + value + "\nExec=@program\nHidden=" + value;
        };
        const QByteArray moved = "[Desktop Entry]\nExec=/nonexistent/m -x\nTerminal=true\n";
        const QByteArray huge = "[Desktop Entry]\nExec=@program\n" + QByteArray(1 << 20, '#');
        const QByteArray none;
        const QByteArray hidden = edited("Hidden=true\n");
        struct Case {
            QByteArray before; // null: no file
            Call call;
            bool succeeds;
            QByteArray after;
            bool enabled;
        };
        for (const Case &test : std::initializer_list<Case>{
                 {none, Call::Standing, true, "@ours", true},
                 {none, Call::Unregister, true, none, false},
                 {"@ours", Call::Expressed, true, "@ours", true},
                 {"@ours", Call::Unregister, true, none, false},
                 {"@moved", Call::Standing, true, "@ours", true},
                 {"@moved", Call::Unregister, true, none, false},
                 {edited(""), Call::Standing, true, edited(""), true},
                 {edited(""), Call::Unregister, true, hidden, false},
                 {hidden, Call::Standing, false, hidden, false},
                 {hidden, Call::Unregister, true, hidden, false},
                 {hidden, Call::Expressed, true, edited("Hidden=false\n"), true},
                 {gnome("False"), Call::Standing, false, gnome("False"), false},
                 {gnome("0"), Call::Expressed, true, gnome("true"), true},
                 {"@oursX-MATE-Autostart-enabled=false", Call::Expressed, true,
                  "@oursX-MATE-Autostart-enabled=true", true},
                 {twice("true"), Call::Expressed, true, twice("false"), true},
                 {moved, Call::Standing, true,
                  "[Desktop Entry]\nExec=\"@program\"\nTerminal=true\n", true},
                 {"[Desktop Entry]", Call::Standing, true, "[Desktop Entry]\nExec=\"@program\"\n",
                  true},
                 {"", Call::Standing, false, "", false},
                 {QByteArray("\0\xff[Desktop Entry]", 17), Call::Expressed, true, "@ours", true},
                 {huge, Call::Expressed, false, huge, false},
                 {huge, Call::Unregister, false, huge, false},
             }) {
            QFile::remove(path());
            if (!test.before.isNull())
                writeFile(path(), filledIn(test.before, m_program));
            LinuxLoginItem entry(m_program);
            const QByteArray name = test.before.left(200);
            QVERIFY2(make(entry, test.call) == test.succeeds, name);
            QVERIFY2(readFile(path()) == filledIn(test.after, m_program), name);
            QVERIFY2(QFile::exists(path()) != test.after.isNull(), name);
            QVERIFY2(entry.isEnabled() == test.enabled, name);
        }
    }

    void namesAnyProgram()
    {
        for (const QString &name :
             {QStringLiteral("a b"), QStringLiteral("50% $HOME `x`"),
              QStringLiteral("\"q\" 'r' \\s\\n\\\\"), QStringLiteral("ü\n;#="),
              QStringLiteral("%f"), QStringLiteral("a  "), QStringLiteral("a \t"),
              QStringLiteral("a\r"), QStringLiteral("a \f")}) {
            const QString program = makeProgram(name);
            LinuxLoginItem entry(program);
            QVERIFY2(entry.registerItem(LoginItemWish::Standing) && entry.isEnabled(),
                     qPrintable(name));
            QVERIFY(isOwnAutostartText(readFile(path())));
            // still there, but no longer to be run
            QFile::remove(program);
            QVERIFY2(!entry.isEnabled() && !entry.registerItem(LoginItemWish::Expressed),
                     qPrintable(name));
            QVERIFY(entry.unregisterItem());
        }
    }

    void doesNoHarmToOtherThings()
    {
        QDir().mkpath(QFileInfo(path()).path());
        const auto fails = [this] {
            LinuxLoginItem entry(m_program);
            return !entry.isEnabled() && !entry.registerItem(LoginItemWish::Standing)
                && !entry.registerItem(LoginItemWish::Expressed) && !entry.unregisterItem();
        };
        mkfifo(path().toUtf8(), 0600);
        QVERIFY(fails());
        QFile::remove(path());
        QCOMPARE(symlink("/nonexistent/entry", path().toUtf8()), 0);
        QVERIFY(fails() && QFileInfo(path()).isSymLink());

        // a link into a folder that the user keeps under control is followed
        const QString target = m_folder->filePath(QStringLiteral("kept"));
        writeFile(target, "[Desktop Entry]\nExec=/nonexistent/x\n");
        QFile::remove(path());
        QFile::link(target, path());
        QVERIFY(LinuxLoginItem(m_program).registerItem(LoginItemWish::Standing));
        QVERIFY(QFileInfo(path()).isSymLink());
        QVERIFY(readFile(target).contains(m_program.toUtf8()));
    }

    void goesWhereTheDesktopLooks()
    {
        const mode_t mask = umask(0);
        QVERIFY(LinuxLoginItem(m_program).registerItem(LoginItemWish::Standing));
        umask(mask);
        QCOMPARE(QFileInfo(config()).permissions() & 0x77, QFile::Permissions());
        QCOMPARE(QFileInfo(path()).permissions() & 0x777, QFile::Permissions(0x644));

        const QByteArray home = qgetenv("HOME");
        qputenv("HOME", m_folder->path().toUtf8());
        qputenv("XDG_CONFIG_HOME", "relative");
        const bool done = LinuxLoginItem(m_program).registerItem(LoginItemWish::Standing);
        qputenv("HOME", home);
        QVERIFY(done);
        QVERIFY(QFile::exists(
            m_folder->filePath(QStringLiteral(".config/autostart/org.meterkin.Meterkin.desktop"))));
    }

private:
    QString config() const { return m_folder->filePath(QStringLiteral("config")); }
    QString path() const
    {
        return config() + QStringLiteral("/autostart/org.meterkin.Meterkin.desktop");
    }
    QString makeProgram(const QString &name) const
    {
        QString program = m_folder->filePath(name);
        writeFile(program, "#!/bin/sh\n");
        QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return program;
    }
    static bool make(LinuxLoginItem &entry, Call call)
    {
        if (call == Call::Unregister)
            return entry.unregisterItem();
        return entry.registerItem(call == Call::Standing ? LoginItemWish::Standing
                                                         : LoginItemWish::Expressed);
    }
    static void writeFile(const QString &path, const QByteArray &text)
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    static QByteArray readFile(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_program;
};

METERKIN_TEST(LinuxLoginItemTest);
#include "LoginItemTest.moc"
