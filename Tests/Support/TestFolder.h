#pragma once

#include <QProcess>
#include <QTemporaryDir>

/// A folder for the files of one test.
class TestFolder {
public:
    QString path() const { return m_folder.path(); }
    QString at(const char *path) const { return m_folder.filePath(QString::fromUtf8(path)); }

    /// What a command of the shell prints, errors included, run in the folder with `argument` as
    /// $0.
    QByteArray shell(const QByteArray &command, const QString &argument = {}) const
    {
        QProcess process;
        process.setWorkingDirectory(path());
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral("sh"),
                      {QStringLiteral("-c"), QString::fromUtf8(command), argument});
        process.waitForFinished();
        return process.readAll();
    }

private:
    QTemporaryDir m_folder;
};
