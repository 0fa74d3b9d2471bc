#pragma once

#include "Model/DashboardViewModel.h"
#include "Model/MetricSettings.h"
#include "Model/SettingsViewModel.h"
#include "Model/SystemMetric.h"
#include "Model/ThresholdTier.h"
#include "Platform/DesktopAppearance.h"
#include "Services/HotkeyRecorder.h"
#include "Updates/UpdaterController.h"

#include <QtQml/qqml.h>

// Registers the models in QML, so that the models do not depend on QML.

struct DashboardViewModelInQml {
    Q_GADGET
    QML_FOREIGN(DashboardViewModel)
    QML_NAMED_ELEMENT(DashboardViewModel)
    QML_UNCREATABLE("made by the program")
};

struct SettingsViewModelInQml {
    Q_GADGET
    QML_FOREIGN(SettingsViewModel)
    QML_NAMED_ELEMENT(SettingsViewModel)
    QML_UNCREATABLE("made by the program")
};

struct MetricSettingsInQml {
    Q_GADGET
    QML_FOREIGN(MetricSettings)
    QML_NAMED_ELEMENT(MetricSettings)
    QML_UNCREATABLE("made by the program")
};

struct UpdaterControllerInQml {
    Q_GADGET
    QML_FOREIGN(UpdaterController)
    QML_NAMED_ELEMENT(UpdaterController)
    QML_UNCREATABLE("made by the program")
};

struct HotkeyRecorderInQml {
    Q_GADGET
    QML_FOREIGN(HotkeyRecorder)
    QML_NAMED_ELEMENT(HotkeyRecorder)
    QML_UNCREATABLE("made by the program")
};

struct SystemColorsInQml {
    Q_GADGET
    QML_FOREIGN(SystemColors)
    QML_VALUE_TYPE(systemColors)
};

struct SystemMetricInQml {
    Q_GADGET
    QML_FOREIGN(SystemMetrics)
    QML_NAMED_ELEMENT(SystemMetric)
    QML_UNCREATABLE("names the enumerators")
};

struct ThresholdTierInQml {
    Q_GADGET
    QML_FOREIGN(ThresholdTiers)
    QML_NAMED_ELEMENT(ThresholdTier)
    QML_UNCREATABLE("names the enumerators")
};
