#pragma once

#include <QObject>
#include <QUrl>

/// Opens the links of the views in the user's browser, which starts as if from a shell. While it
/// lives. Main thread only.
class LinkOpener : public QObject {
    Q_OBJECT

public:
    LinkOpener();
    ~LinkOpener() override;

public slots:
    void open(const QUrl &link);
};
