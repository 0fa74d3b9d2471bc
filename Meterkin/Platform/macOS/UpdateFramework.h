#pragma once

#include "Platform/UpdateFramework.h"

#include <memory>

/// The Sparkle framework in the bundle, with its standard controller and its own windows.
class MacUpdateFramework : public UpdateFramework {
    Q_OBJECT

public:
    explicit MacUpdateFramework(QObject *parent = nullptr);
    ~MacUpdateFramework() override;

    void start() override;
    void setAutomaticallyDownloadsUpdates(bool automatically) override;
    void observe() override;
    void checkForUpdates() override;

private:
    struct Objects;
    std::unique_ptr<Objects> m_objects; ///< null until start()
};
