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
        const QByteArray program = m_program.toUtf8();
        const QByteArray ours = AutostartEntry::textFor(m_program);
        const QByteArray moved = AutostartEntry::textFor(u"/nonexistent/meterkin"_s);
        const auto edited = [&](const QByteArray &more) {
            return "# mine\n[Desktop Entry]\n" + more + "Name = M\r\nExec=env A=b " + program
                + " -x\n\n[Other]\nHidden=true";
        };
        const QByteArray hidden = edited("Hidden=true\n");
        const QByteArray gnome = edited("X-GNOME-Autostart-enabled=False\n");
        const QByteArray huge = ours + QByteArray(1 << 20, '#');
        const QByteArray none;
        using Case = std::tuple<QByteArray, std::optional<LoginItemWish>, bool, QByteArray, bool>;
        for (const auto &[before, wish, succeeds, after, isEnabled] : std::initializer_list<Case>{
                 {none, Unregister, true, none, false},
                 {moved, Standing, true, ours, true},
                 {moved, Unregister, true, none, false},
                 {edited(""), Standing, true, edited(""), true},
                 {edited(""), Unregister, true, hidden, false},
                 {hidden, Standing, false, hidden, false},
                 {hidden, Expressed, true, edited("Hidden=false\n"), true},
                 {gnome, Standing, false, gnome, false},
                 {gnome, Expressed, true, edited("X-GNOME-Autostart-enabled=true\n"), true},
                 {"[Desktop Entry]", Unregister, true, "[Desktop Entry]\nHidden=true\n", false},
                 {"", Standing, false, "", false},
                 {QByteArray("\0\xff[Desktop Entry]", 17), Expressed, true, ours, true},
                 {huge, Expressed, false, huge, false},
             }) {
            QFile::remove(path());
            if (!before.isNull())
                write(path(), before);
            LinuxLoginItem entry(m_program);
            const QByteArray name = before.left(200);
            QVERIFY2((wish ? entry.registerItem(*wish) : entry.unregisterItem()) == succeeds, name);
            QVERIFY2(contents(path()) == after, name);
            QVERIFY2(QFile::exists(path()) != after.isNull(), name);
            QVERIFY2(entry.isEnabled() == isEnabled, name);
        }
    }

    void namesAnyProgram()
    {
        for (const char *text :
             {"50% $HOME `x`", "\"q\" 'r' \\s\\n\\\\", "ü\n;#=", "%f", "a  ", "a\r"}) {
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
        const mode_t mask = umask(0);
        QVERIFY(LinuxLoginItem(m_program).registerItem(Standing));
        umask(mask);
        QCOMPARE(m_folder->shell("stat -c %a .config " + entry), QByteArray("700\n644\n"));
        for (const QByteArray &made : {"mkfifo " + entry, "ln -s /nonexistent/entry " + entry}) {
            QVERIFY(m_folder->shell("rm -f " + entry + "; " + made).isEmpty());
            LinuxLoginItem item(m_program);
            QVERIFY2(!item.isEnabled() && !item.registerItem(Expressed) && !item.unregisterItem(),
                     made);
        }
        QVERIFY(QFileInfo(path()).isSymLink());
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
