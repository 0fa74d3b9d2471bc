#pragma once

#include "Platform/HotkeyRegistrar.h"

#include <QBindable>
#include <QObject>
#include <QProperty>
#include <QString>

class KeyboardLayout;
class KeyDownMonitor;
struct KeyDown;
class SettingsViewModel;

/// Records a new hot key from the keyboard into the settings, and describes the present one. Main
/// thread only.
class HotkeyRecorder : public QObject {
    Q_OBJECT
    /// True while it waits for a key.
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY isRecordingChanged BINDABLE
                   bindableIsRecording FINAL)
    Q_PROPERTY(QString displayText READ displayText NOTIFY displayTextChanged BINDABLE
                   bindableDisplayText FINAL)
    /// Why the hot key does not work now, and which key other programs lose to it; empty when there
    /// is nothing to say.
    Q_PROPERTY(QString remark READ remark NOTIFY remarkChanged BINDABLE bindableRemark FINAL)
    Q_PROPERTY(bool isSet READ isSet NOTIFY isSetChanged BINDABLE bindableIsSet FINAL)
    Q_PROPERTY(bool canClear READ canClear NOTIFY canClearChanged BINDABLE bindableCanClear FINAL)

public:
    struct Dependencies {
        KeyDownMonitor &monitor;
        HotkeyRegistrar &registrar; ///< names the obstacle
        KeyboardLayout *layout = nullptr; ///< null: combinations are written in symbols
    };

    /// The settings and the dependencies outlive the recorder.
    HotkeyRecorder(SettingsViewModel &settings, const Dependencies &dependencies);
    ~HotkeyRecorder() override;

    bool isRecording() const { return m_isRecording; }
    QBindable<bool> bindableIsRecording() const { return &m_isRecording; }
    QString displayText() const { return m_displayText; }
    QBindable<QString> bindableDisplayText() const { return &m_displayText; }
    QString remark() const { return m_remark; }
    QBindable<QString> bindableRemark() const { return &m_remark; }
    bool isSet() const { return m_isSet; }
    QBindable<bool> bindableIsSet() const { return &m_isSet; }
    bool canClear() const { return m_canClear; }
    QBindable<bool> bindableCanClear() const { return &m_canClear; }

    Q_INVOKABLE void record();
    /// Ends the recording; fine to call when there is none.
    Q_INVOKABLE void cancel();
    /// Forgets the combination. Whether the hot key is enabled stays as it is.
    Q_INVOKABLE void clear();

signals:
    void isRecordingChanged();
    void displayTextChanged();
    void remarkChanged();
    void isSetChanged();
    void canClearChanged();

private:
    bool capture(const KeyDown &key);
    QString textOf(const HotkeyCombination &combination) const;
    QString warning() const;

    SettingsViewModel &m_settings;
    Dependencies m_dependencies;
    // Qt 6.4 crashes when a binding reads more than four properties only at a later evaluation.
    QProperty<HotkeyCombination> m_combination;
    QProperty<QString> m_warning; ///< which key other programs lose
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(HotkeyRecorder, bool, m_isRecording, false,
                                         &HotkeyRecorder::isRecordingChanged)
    Q_OBJECT_BINDABLE_PROPERTY(HotkeyRecorder, QString, m_displayText,
                               &HotkeyRecorder::displayTextChanged)
    Q_OBJECT_BINDABLE_PROPERTY(HotkeyRecorder, QString, m_remark, &HotkeyRecorder::remarkChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(HotkeyRecorder, bool, m_isSet, false,
                                         &HotkeyRecorder::isSetChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(HotkeyRecorder, bool, m_canClear, false,
                                         &HotkeyRecorder::canClearChanged)
};
