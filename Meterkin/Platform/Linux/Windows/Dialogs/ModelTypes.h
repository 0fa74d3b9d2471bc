#pragma once

#include "Platform/Linux/Updates/Session.h"

#include <QtQml/qqml.h>

// Registers the model in QML, so that it does not depend on QML.

struct UpdateSessionInQml {
    Q_GADGET
    QML_FOREIGN(UpdateSession)
    QML_NAMED_ELEMENT(UpdateSession)
    QML_UNCREATABLE("made by the update framework")
};
