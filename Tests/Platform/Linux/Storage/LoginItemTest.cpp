#include "Platform/Linux/Storage/LoginItem.h"
#include "Platform/Linux/Storage/AutostartEntry.h"
#include "Support/Files.h"
#include "Support/TestFolder.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <optional>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto Standing = LoginItemWish::Standing;
constexpr auto Expressed = LoginItemWish::Expressed;
constexpr std::nullopt_t Unregister = std::nullopt;

/// The placeholders stand for our entry, that of a program that does not exist, and our program.
QByteArray filledIn(QByteArray text, const QString &program)
{
    return text.replace("@ours", AutostartEntry::textFor(program))
        .replace("@moved", AutostartEntry::textFor(u"/nonexistent/meterkin"_s))
        .replace("@program", program.toUtf8());
}

} // namespace

class LinuxLoginItemTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_folder.emplace();
        qputenv("HOME", m_folder->path().toUtf8());
        qputenv("XDG_CONFIG_HOME", "relative"); // which does not count
        m_program = makeProgram("meterkin");
    }
    void cleanup()
    {
        qunsetenv("XDG_CONFIG_HOME");
        qputenv("HOME", m_home);
    }

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
        using Case = std::tuple<QByteArray, std::optional<LoginItemWish>, bool, QByteArray, bool>;
        for (const auto &[before, wish, succeeds, after, isEnabled] : std::initializer_list<Case>{
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
            if (!before.isNull())
                write(path(), filledIn(before, m_program));
            LinuxLoginItem entry(m_program);
            const QByteArray name = before.left(200);
            const bool done = wish ? entry.registerItem(*wish) : entry.unregisterItem();
            QVERIFY2(done == succeeds, name);
            QVERIFY2(contents(path()) == filledIn(after, m_program), name);
            QVERIFY2(QFile::exists(path()) != after.isNull(), name);
            QVERIFY2(entry.isEnabled() == isEnabled, name);
        }
    }

    void namesAnyProgram()
    {
        for (const char *text : {"a b", "50% $HOME `x`", "\"q\" 'r' \\s\\n\\\\", "ü\n;#=", "%f",
                                 "a  ", "a \t", "a\r", "a \f"}) {
            const QString program = makeProgram(text);
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
        const QByteArray entry = path().toUtf8();
        QVERIFY(m_folder->shell("mkdir -p .config/autostart").isEmpty());
        for (const QByteArray &made : {"mkfifo " + entry, "ln -s /nonexistent/entry " + entry}) {
            QVERIFY(m_folder->shell("rm -f " + entry + "; " + made).isEmpty());
            LinuxLoginItem item(m_program);
            QVERIFY2(!item.isEnabled() && !item.registerItem(Standing)
                         && !item.registerItem(Expressed) && !item.unregisterItem(),
                     made);
        }
        QVERIFY(QFileInfo(path()).isSymLink());
    }

    void letsNobodyElseWrite()
    {
        const mode_t mask = umask(0);
        QVERIFY(LinuxLoginItem(m_program).registerItem(Standing));
        umask(mask);
        QCOMPARE(m_folder->shell("stat -c %a .config " + path().toUtf8()),
                 QByteArray("700\n644\n"));
    }

private:
    QString path() const { return m_folder->at(".config/autostart/org.meterkin.Meterkin.desktop"); }
    QString makeProgram(const char *name) const
    {
        QString program = m_folder->at(name);
        write(program, "#!/bin/sh\n");
        QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return program;
    }

    std::optional<TestFolder> m_folder;
    QByteArray m_home = qgetenv("HOME");
    QString m_program;
};

METERKIN_TEST(LinuxLoginItemTest);
#include "LoginItemTest.moc"
