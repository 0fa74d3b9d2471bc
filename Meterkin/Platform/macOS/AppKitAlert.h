#pragma once

#include "Platform/InformationAlert.h"

/// The system's own alert; returns once it is answered.
class AppKitAlert : public InformationAlert {
public:
    void run(const QString &messageText, const QString &informativeText) override;
};
