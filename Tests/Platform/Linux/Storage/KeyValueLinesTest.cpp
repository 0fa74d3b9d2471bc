#include "Platform/Linux/Storage/KeyValueLines.h"
#include "Support/TestMain.h"

#include <QtTest>

class KeyValueLinesTest : public QObject {
    Q_OBJECT

private slots:
    void readsAndSets_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("header");
        QTest::addColumn<QByteArray>("value"); // of "key"; null: absent
        QTest::addColumn<QByteArray>("after"); // with the value "new"
        const auto row = [](const QByteArray &before, const QByteArray &value,
                            const QByteArray &after, const QByteArray &header = {}) {
            QTest::newRow((header + before).toPercentEncoding(" =#[]").constData())
                << before << header << value << after;
        };
        const QByteArray null;
        row("", null, "key=new\n");
        row("a=1", null, "a=1\nkey=new\n");
        row("a=1\r\n", null, "a=1\r\nkey=new\r\n");
        row("key=old\n", "old", "key=new\n");
        row("\t key \t=  two words \r\nb=2", "two words", "\t key \t=  new \r\nb=2");
        row("key=\nb=2", "", "key=new\nb=2");
        row("key = \f=\"\n", "\f=\"", "key = new\n");
        row("key=1\nother\nkey=2", "2", "key=new\nother\nkey=new");
        row("#key=1\n # key=2\nkeys=1\nmykey=2\nkey\n=key\n", null,
            "#key=1\n # key=2\nkeys=1\nmykey=2\nkey\n=key\nkey=new\n");
        row(QByteArray("\0\xff==\nkey=\xfe\0\n[b]\n", 16), QByteArray("\xfe\0", 2),
            QByteArray("\0\xff==\nkey=new\n[b]\n", 17));

        const QByteArray header = "[Group]";
        row("key=1\n[Other]\nkey=2\n", null, "key=1\n[Other]\nkey=2\n", header);
        row("key=1\n [Group] \r\na=1\n[Other]\nkey=2", null,
            "key=1\n [Group] \r\nkey=new\r\na=1\n[Other]\nkey=2", header);
        row("[Group]\nkey=1\n[Group]\nkey=2", "1", "[Group]\nkey=new\n[Group]\nkey=2", header);
        row("[Group]", null, "[Group]\nkey=new\n", header);
    }
    void readsAndSets()
    {
        QFETCH(const QByteArray, before);
        QFETCH(const QByteArray, header);
        KeyValueLines lines(before, header);
        const std::optional<QByteArrayView> found = lines.value("key");
        QFETCH(const QByteArray, value);
        QCOMPARE(found.has_value(), !value.isNull());
        QCOMPARE(found.value_or(QByteArrayView()), value);
        lines.set("key", "new");
        QTEST(lines.text(), "after");
    }
};

METERKIN_TEST(KeyValueLinesTest);
#include "KeyValueLinesTest.moc"
