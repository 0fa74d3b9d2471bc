#pragma once

#include "Platform/UpdateFramework.h"

#include <memory>

/// The update framework in the bundle, by its own standard controller and with its own windows.
class SparkleFramework : public UpdateFramework {
    Q_OBJECT

public:
    explicit SparkleFramework(QObject *parent = nullptr);
    ~SparkleFramework() override;

    void start() override;
    void setAutomaticallyDownloadsUpdates(bool automatically) override;
    void observe() override;
    void checkForUpdates() override;

private:
    struct Objects;
    std::unique_ptr<Objects> m_objects; ///< from the start on
};
