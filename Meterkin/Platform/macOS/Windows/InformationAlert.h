#pragma once

#include "Platform/InformationAlert.h"

/// An NSAlert; run() returns once it is answered.
class MacInformationAlert : public InformationAlert {
public:
    void run(const QString &messageText, const QString &informativeText) override;
};
