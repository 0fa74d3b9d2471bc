#pragma once

#include <QBindable>
#include <QObject>
#include <QProperty>
#include <QString>

class KeyDownMonitor;
struct KeyDown;
class SettingsViewModel;

/// Records a new hot key from the keyboard into the settings and shows the one that is set. Main
/// thread only.
class HotkeyRecorder : public QObject {
    Q_OBJECT
    /// Waits for a key.
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY isRecordingChanged BINDABLE
                   bindableIsRecording FINAL)
    Q_PROPERTY(QString displayText READ displayText NOTIFY displayTextChanged BINDABLE
                   bindableDisplayText FINAL)
    Q_PROPERTY(bool isSet READ isSet NOTIFY isSetChanged BINDABLE bindableIsSet FINAL)
    Q_PROPERTY(bool canClear READ canClear NOTIFY canClearChanged BINDABLE bindableCanClear FINAL)

public:
    /// Without a monitor no key ever ends the recording. Both outlive the recorder.
    HotkeyRecorder(SettingsViewModel &settings, KeyDownMonitor *monitor, QObject *parent = nullptr);
    ~HotkeyRecorder() override;

    bool isRecording() const { return m_isRecording; }
    QBindable<bool> bindableIsRecording() const { return &m_isRecording; }
    QString displayText() const { return m_displayText; }
    QBindable<QString> bindableDisplayText() const { return &m_displayText; }
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
    void isSetChanged();
    void canClearChanged();

private:
    bool capture(const KeyDown &key);

    SettingsViewModel &m_settings;
    KeyDownMonitor *m_monitor;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(HotkeyRecorder, bool, m_isRecording, false,
                                         &HotkeyRecorder::isRecordingChanged)
    Q_OBJECT_BINDABLE_PROPERTY(HotkeyRecorder, QString, m_displayText,
                               &HotkeyRecorder::displayTextChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(HotkeyRecorder, bool, m_isSet, false,
                                         &HotkeyRecorder::isSetChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(HotkeyRecorder, bool, m_canClear, false,
                                         &HotkeyRecorder::canClearChanged)
};
