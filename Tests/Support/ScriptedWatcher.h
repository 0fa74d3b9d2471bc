#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QSet>

/// A panel played by the test: the watcher of notifier items and their host in one.
class ScriptedWatcher : public QDBusVirtualObject {
    Q_OBJECT

public:
    enum class Answer { Good, Wrong, Error, None };

    /// Takes the watcher's name, also from another one.
    explicit ScriptedWatcher(const QDBusConnection &connection, Answer toProperty = Answer::Good,
                             Answer toRegister = Answer::Good);
    /// Gives the name up.
    ~ScriptedWatcher() override;

    void takeOver();
    void answerProperty(Answer answer) { m_toProperty = answer; }
    void setHost(bool registered);

    /// Items that registered here and still have their bus name.
    QStringList items() const { return (QSet<QString>(m_registered) & m_names).values(); }
    int registrations() const { return m_registrations; }
    int questions() const { return m_questions; }
    /// The most item names that were on the bus at the same time, registered or not.
    qsizetype mostNames() const { return m_mostNames; }

    /// Calls the item last registered, from outside; the reply or the error.
    QDBusMessage call(const QString &path, const QString &interface, const QString &method,
                      const QVariantList &arguments = {});
    /// A property of the item, or nothing.
    QVariant property(const QString &name);
    /// The item's signals since the last time.
    QStringList takeSignals();

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;
    QString introspect(const QString &) const override { return QString(); }

private slots:
    void recordName(const QString &name, const QString &oldOwner, const QString &newOwner);
    void recordSignal(const QDBusMessage &message) { m_signals.append(message.member()); }

private:
    QDBusConnection m_connection;
    Answer m_toProperty;
    Answer m_toRegister;
    bool m_host = true;
    int m_registrations = 0;
    int m_questions = 0; ///< for the property
    qsizetype m_mostNames = 0;
    QString m_lastItem;
    QSet<QString> m_registered;
    QSet<QString> m_names;
    QStringList m_signals;
};
