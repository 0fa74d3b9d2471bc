#pragma once

#include <QByteArray>
#include <QTemporaryFile>

#include <cstdio>

#include <unistd.h>

/// Everything the process writes to its standard output while this exists.
class StandardOutput {
public:
    StandardOutput()
    {
        std::fflush(stdout);
        m_file.open();
        m_original = dup(STDOUT_FILENO);
        dup2(m_file.handle(), STDOUT_FILENO);
    }
    ~StandardOutput()
    {
        dup2(m_original, STDOUT_FILENO);
        close(m_original);
    }
    Q_DISABLE_COPY_MOVE(StandardOutput)

    /// What has arrived; what the writer did not flush is not in it.
    QByteArray text()
    {
        QFile file(m_file.fileName());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryFile m_file;
    int m_original = -1;
};
