#include "Platform/Linux/SettingsText.h"
#include "Support/TestMain.h"

#include <QtTest>

/// What lines of a settings file mean and how they change.
class SettingsTextTest : public QObject {
    Q_OBJECT

private slots:
    void reads_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("value"); // null: none
        const auto row = [](const char *name, const QByteArray &text, const char *value) {
            QTest::newRow(name) << text << QString::fromUtf8(value);
        };
        row("plain", "key=value\n", "value");
        row("blanks, no line feed", "\t key =  two words ", "two words");
        row("carriage return", "key=a\r\nother=b\r\n", "a");
        row("last of several", "key=1\nkey=2\nother=3\n", "2");
        row("equals sign", "key=a=b\n", "a=b");
        row("quoted", "key=\" a \"\n", " a ");
        row("one quote", "key=\"\n", "\"");
        row("escapes", "key=a\\nb\\\\n\\x\\\n", "a\nb\\n\\x\\");
        row("empty", "key=\n", "");
        row("not UTF-8", "key=a\xff\n", "a\xef\xbf\xbd");
        row("among garbage", QByteArray("\0\0==\n=\n\xfe\nkey=1\n\0", 15), "1");
        row("comment", "#key=1\n # key=2\n", nullptr);
        row("longer key", "keys=1\nmykey=2\nkey\n", nullptr);
        row("nothing", "", nullptr);
    }
    void reads()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, value);
        const std::optional<QString> found = settingIn(text, QStringLiteral("key"));
        QCOMPARE(found.has_value(), !value.isNull());
        QCOMPARE(found.value_or(QString()), value);
    }

    void writes_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        const auto row = [](const char *name, const QByteArray &before, const QByteArray &after) {
            QTest::newRow(name) << before << after;
        };
        row("into nothing", "", "key=new\n");
        row("at the end", "a=1\n", "a=1\nkey=new\n");
        row("after an open line", "a=1", "a=1\nkey=new\n");
        row("in its place", "a=1\n key = old\n\n# b\n", "a=1\nkey=new\n\n# b\n");
        row("in the open line", "a=1\nkey=old", "a=1\nkey=new\n");
        row("once", "key=1\na=1\nkey=2\nb\nkey=3\n# c\n", "a=1\nb\nkey=new\n# c\n");
        row("alone", "key=1\nkey=2", "key=new\n");
        row("garbage stays", QByteArray("\0\xff=\n#key=0\n\r\n", 13),
            QByteArray("\0\xff=\n#key=0\n\r\nkey=new\n", 21));
    }
    void writes()
    {
        QFETCH(QByteArray, before);
        QTEST(withSetting(before, QStringLiteral("key"), QStringLiteral("new")), "after");
    }

    void everyTextComesBack_data()
    {
        QTest::addColumn<QString>("value");
        int number = 0;
        for (const char *value : {"", " ", " a", "a\t", "\"", "\"\"", "\"a\"", "a\nb", "\r", "\\",
                                  "\\n", "#", "a=b", "ü — \xf0\x9f\x8c\x80", "\\\"\n\\"})
            QTest::addRow("%d", ++number) << QString::fromUtf8(value);
        QTest::newRow("NUL") << QString(QChar(0));
    }
    void everyTextComesBack()
    {
        QFETCH(QString, value);
        const QByteArray text = withSetting("key=old\nb=1\n", QStringLiteral("key"), value);
        QCOMPARE(settingIn(text, QStringLiteral("key")), std::optional(value));
        QCOMPARE(settingIn(text, QStringLiteral("b")), std::optional(QStringLiteral("1")));
    }
};

METERKIN_TEST(SettingsTextTest);
#include "SettingsTextTest.moc"
