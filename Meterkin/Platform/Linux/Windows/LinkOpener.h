#pragma once

#include <QObject>
#include <QUrl>

/// Opens the links in the views in the user's browser, which does not inherit this program's batch
/// scheduling. For as long as it exists. Main thread only.
class LinkOpener : public QObject {
    Q_OBJECT

public:
    LinkOpener();
    ~LinkOpener() override;

public slots:
    void open(const QUrl &link);
};
