#include "Platform/Linux/Storage/LoginItem.h"
#include "Platform/Linux/Storage/AutostartEntry.h"
#include "Sampling/Files.h"
#include "Support/TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr auto Standing = LoginItemWish::Standing;
constexpr auto Expressed = LoginItemWish::Expressed;
constexpr std::nullopt_t Unregister = std::nullopt;

/// The placeholders stand for our entry, that of a program that does not exist, and our program.
QByteArray filledIn(QByteArray text, const QString &program)
{
    return text.replace("@ours", AutostartEntry::textFor(program))
        .replace("@moved", AutostartEntry::textFor(QStringLiteral("/nonexistent/meterkin")))
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
        const QByteArray gnome = "[Desktop Entry]\nExec=\"@program\"\nX-GNOME-Autostart-enabled=";
        const QByteArray moved = "[Desktop Entry]\nExec=/nonexistent/m -x\nTerminal=true\n";
        const QByteArray huge = "[Desktop Entry]\nExec=@program\n" + QByteArray(1 << 20, '#');
        const QByteArray none;
        const QByteArray hidden = edited("Hidden=true\n");
        struct Case {
            QByteArray before; // null: no file
            std::optional<LoginItemWish> wish; // absent: unregister
            bool succeeds;
            QByteArray after;
            bool enabled;
        };
        for (const Case &test : std::initializer_list<Case>{
                 {none, Standing, true, "@ours", true},
                 {none, Unregister, true, none, false},
                 {"@ours", Unregister, true, none, false},
                 {"@moved", Standing, true, "@ours", true},
                 {"@moved", Unregister, true, none, false},
                 {edited(""), Standing, true, edited(""), true},
                 {edited(""), Unregister, true, hidden, false},
                 {hidden, Standing, false, hidden, false},
                 {hidden, Expressed, true, edited("Hidden=false\n"), true},
                 {gnome + "False", Standing, false, gnome + "False", false},
                 {gnome + "0", Expressed, true, gnome + "true", true},
                 {"@oursX-MATE-Autostart-enabled=false", Expressed, true,
                  "@oursX-MATE-Autostart-enabled=true", true},
                 {moved, Standing, true, "[Desktop Entry]\nExec=\"@program\"\nTerminal=true\n",
                  true},
                 {"", Standing, false, "", false},
                 {QByteArray("\0\xff[Desktop Entry]", 17), Expressed, true, "@ours", true},
                 {huge, Expressed, false, huge, false},
                 {huge, Unregister, false, huge, false},
             }) {
            QFile::remove(path());
            if (!test.before.isNull())
                write(path(), filledIn(test.before, m_program));
            LinuxLoginItem entry(m_program);
            const QByteArray name = test.before.left(200);
            const bool done = test.wish ? entry.registerItem(*test.wish) : entry.unregisterItem();
            QVERIFY2(done == test.succeeds, name);
            QVERIFY2(contents(path()) == filledIn(test.after, m_program), name);
            QVERIFY2(QFile::exists(path()) != test.after.isNull(), name);
            QVERIFY2(entry.isEnabled() == test.enabled, name);
        }
    }

    void namesAnyProgram()
    {
        for (const char *text : {"a b", "50% $HOME `x`", "\"q\" 'r' \\s\\n\\\\", "ü\n;#=", "%f",
                                 "a  ", "a \t", "a\r", "a \f"}) {
            const QString name = QString::fromUtf8(text);
            const QString program = makeProgram(name);
            LinuxLoginItem entry(program);
            QVERIFY2(entry.registerItem(Standing) && entry.isEnabled(), text);
            QVERIFY(AutostartEntry(contents(path())).isUnedited());
            QFile::remove(program);
            QVERIFY2(!entry.isEnabled() && !entry.registerItem(Expressed), text);
            QVERIFY(entry.unregisterItem());
        }
    }

    void doesNoHarmToOtherThings()
    {
        QDir().mkpath(QFileInfo(path()).path());
        const auto fails = [this] {
            LinuxLoginItem entry(m_program);
            return !entry.isEnabled() && !entry.registerItem(Standing)
                && !entry.registerItem(Expressed) && !entry.unregisterItem();
        };
        mkfifo(path().toUtf8(), 0600);
        QVERIFY(fails());
        QFile::remove(path());
        QCOMPARE(symlink("/nonexistent/entry", path().toUtf8()), 0);
        QVERIFY(fails() && QFileInfo(path()).isSymLink());
    }

    void goesWhereTheDesktopLooks()
    {
        const mode_t mask = umask(0);
        QVERIFY(LinuxLoginItem(m_program).registerItem(Standing));
        umask(mask);
        QCOMPARE(QFileInfo(config()).permissions() & 0x77, QFile::Permissions());
        QCOMPARE(QFileInfo(path()).permissions() & 0x777, QFile::Permissions(0x644));

        const QByteArray home = qgetenv("HOME");
        qputenv("HOME", m_folder->path().toUtf8());
        qputenv("XDG_CONFIG_HOME", "relative");
        const bool done = LinuxLoginItem(m_program).registerItem(Standing);
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
        write(program, "#!/bin/sh\n");
        QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return program;
    }
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_program;
};

METERKIN_TEST(LinuxLoginItemTest);
#include "LoginItemTest.moc"
