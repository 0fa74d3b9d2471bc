<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>AboutTab</name>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Monitor CPU usage, memory pressure, and fan speed from your menu bar.</source>
        <translation>CPU-Auslastung, Speicherbelegung und Lüfterdrehzahl immer im Blick, in der Leiste.</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Updates suchen …</translation>
    </message>
    <message>
        <source>Automatically download updates</source>
        <translation>Updates automatisch herunterladen</translation>
    </message>
    <message>
        <source>Project website</source>
        <translation>Website des Projekts</translation>
    </message>
</context>
<context>
    <name>AlertManager</name>
    <message>
        <source>Meterkin Alert</source>
        <translation>Warnung von Meterkin</translation>
    </message>
</context>
<context>
    <name>AlertSettings</name>
    <message>
        <source>Threshold Alerts</source>
        <translation>Warnungen</translation>
    </message>
    <message>
        <source>Get notified when a metric enters the red zone. One alert per crossing with a 10-minute cooldown.</source>
        <translation>Sie werden benachrichtigt, wenn ein Messwert in den roten Bereich gerät: eine Warnung je Überschreitung, frühestens alle 10 Minuten.</translation>
    </message>
</context>
<context>
    <name>ApplicationWindows</name>
    <message>
        <source>meterkin Settings</source>
        <translation>meterkin – Einstellungen</translation>
    </message>
    <message>
        <source>Meterkin cannot show this window</source>
        <translation>Meterkin kann dieses Fenster nicht anzeigen</translation>
    </message>
    <message>
        <source>A part of Qt is missing on this computer.</source>
        <translation>Auf diesem Computer fehlt ein Teil von Qt.</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>%1 (--help says more)</source>
        <translation>%1 (mehr dazu mit --help)</translation>
    </message>
    <message>
        <source>Show this help.</source>
        <translation>Diese Hilfe anzeigen.</translation>
    </message>
    <message>
        <source>Show the version.</source>
        <translation>Die Version anzeigen.</translation>
    </message>
    <message>
        <source>Shows memory, CPU or fan speed in the panel of your desktop, and all three on a click.
Where it runs already, its dashboard is shown.</source>
        <translation>Zeigt Speicher, CPU oder Lüfterdrehzahl in der Leiste des Desktops und auf Klick alle drei.
Läuft das Programm schon, wird seine Übersicht angezeigt.</translation>
    </message>
    <message>
        <source>Unexpected argument &apos;%1&apos;.</source>
        <translation>Unerwartetes Argument „%1“.</translation>
    </message>
</context>
<context>
    <name>CoreBars</name>
    <message>
        <source>Per-Core</source>
        <translation>Pro Kern</translation>
    </message>
</context>
<context>
    <name>DashboardReadings</name>
    <message>
        <source>Active: %1G</source>
        <translation>Aktiv: %1G</translation>
    </message>
    <message>
        <source>Wired: %1G</source>
        <translation>Reserviert: %1G</translation>
    </message>
    <message>
        <source>Compressed: %1G</source>
        <translation>Komprimiert: %1G</translation>
    </message>
    <message>
        <source>Fan %1</source>
        <translation>Lüfter %1</translation>
    </message>
    <message>
        <source>Range: %1 - %2 RPM</source>
        <translation>Bereich: %1 - %2 RPM</translation>
    </message>
</context>
<context>
    <name>DashboardView</name>
    <message>
        <source>Open Settings</source>
        <translation>Einstellungen öffnen</translation>
    </message>
    <message>
        <source>Quit meterkin</source>
        <translation>meterkin beenden</translation>
    </message>
</context>
<context>
    <name>DashboardViewModel</name>
    <message>
        <source>%1: %2</source>
        <comment>a vital and its value</comment>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>GeneralSettings</name>
    <message>
        <source>Menu Bar Display</source>
        <translation>Anzeige in der Leiste</translation>
    </message>
    <message>
        <source>Show in menu bar:</source>
        <translation>In der Leiste anzeigen:</translation>
    </message>
    <message>
        <source>Update Interval</source>
        <translation>Messintervall</translation>
    </message>
    <message>
        <source>Read metrics every:</source>
        <translation>Zeit zwischen Messungen:</translation>
    </message>
    <message>
        <source>1 second</source>
        <translation>1 Sekunde</translation>
    </message>
    <message>
        <source>3 seconds</source>
        <translation>3 Sekunden</translation>
    </message>
    <message>
        <source>5 seconds</source>
        <translation>5 Sekunden</translation>
    </message>
    <message>
        <source>10 seconds</source>
        <translation>10 Sekunden</translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <translation>%1 Sekunden</translation>
    </message>
    <message>
        <source>Global Hotkey</source>
        <translation>Globales Tastenkürzel</translation>
    </message>
    <message>
        <source>Enable global hotkey</source>
        <translation>Globales Tastenkürzel verwenden</translation>
    </message>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>Bei der Anmeldung starten</translation>
    </message>
</context>
<context>
    <name>HotkeyRecorder</name>
    <message>
        <source>Not available now: this keyboard has no such key.</source>
        <translation>Zurzeit nicht verfügbar: Diese Tastatur hat keine solche Taste.</translation>
    </message>
    <message>
        <source>Not available now: another program uses it.</source>
        <translation>Zurzeit nicht verfügbar: Ein anderes Programm verwendet es.</translation>
    </message>
    <message>
        <source>Not available now: this desktop offers no global hotkeys.</source>
        <translation>Zurzeit nicht verfügbar: Dieser Desktop bietet keine globalen Tastenkürzel.</translation>
    </message>
    <message>
        <source>Not available now: the system has refused it.</source>
        <translation>Zurzeit nicht verfügbar: Das System hat es abgelehnt.</translation>
    </message>
    <message>
        <source>Not set</source>
        <translation>Nicht festgelegt</translation>
    </message>
    <message>
        <source>While it is on, no other program gets %1.</source>
        <translation>Solange es eingeschaltet ist, erhält kein anderes Programm %1.</translation>
    </message>
</context>
<context>
    <name>HotkeyRecorderRow</name>
    <message>
        <source>Shortcut:</source>
        <translation>Tastenkürzel:</translation>
    </message>
    <message>
        <source>Press a key combination...</source>
        <translation>Tasten drücken …</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Aufnehmen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>InformationAlertView</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>LinuxUpdateFramework</name>
    <message>
        <source>Updates need PackageKit, which is not installed on this computer.</source>
        <translation>Für Updates wird PackageKit benötigt, das auf diesem Computer nicht installiert ist.</translation>
    </message>
    <message>
        <source>The package manager has cancelled the check.</source>
        <translation>Die Paketverwaltung hat die Suche abgebrochen.</translation>
    </message>
    <message>
        <source>Meterkin could not be updated</source>
        <translation>Meterkin konnte nicht aktualisiert werden</translation>
    </message>
    <message>
        <source>Meterkin %1 is available</source>
        <translation>Meterkin %1 ist verfügbar</translation>
    </message>
    <message>
        <source>Choose this notification to install it.</source>
        <translation>Zum Installieren diese Benachrichtigung anklicken.</translation>
    </message>
</context>
<context>
    <name>MenuEntry</name>
    <message>
        <source>Open Dashboard</source>
        <translation>Übersicht öffnen</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Einstellungen öffnen</translation>
    </message>
    <message>
        <source>Quit meterkin</source>
        <translation>meterkin beenden</translation>
    </message>
</context>
<context>
    <name>MetricCard</name>
    <message>
        <source>H: %1</source>
        <translation>H: %1</translation>
    </message>
    <message>
        <source>L: %1</source>
        <translation>T: %1</translation>
    </message>
</context>
<context>
    <name>MetricTraits</name>
    <message>
        <source>Fan Speed</source>
        <translation>Lüfterdrehzahl</translation>
    </message>
    <message>
        <source>Fan speed is %1</source>
        <translation>Die Lüfterdrehzahl beträgt %1</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Speicher</translation>
    </message>
    <message>
        <source>Memory Usage</source>
        <translation>Speicherauslastung</translation>
    </message>
    <message>
        <source>Memory usage is %1</source>
        <translation>Die Speicherauslastung beträgt %1</translation>
    </message>
    <message>
        <source>CPU Usage</source>
        <translation>CPU-Auslastung</translation>
    </message>
    <message>
        <source>CPU usage is %1</source>
        <translation>Die CPU-Auslastung beträgt %1</translation>
    </message>
</context>
<context>
    <name>MissingPanelNotice</name>
    <message>
        <source>No panel shows the readings</source>
        <translation>Keine Leiste zeigt die Messwerte</translation>
    </message>
    <message>
        <source>This desktop needs a tray for it. For GNOME, install the extension “AppIndicator and KStatusNotifierItem Support”.</source>
        <translation>Dieser Desktop braucht dafür einen Infobereich. Installieren Sie für GNOME die Erweiterung „AppIndicator and KStatusNotifierItem Support“.</translation>
    </message>
</context>
<context>
    <name>NotificationServer</name>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
</context>
<context>
    <name>OnboardingCloseButton</name>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>OnboardingDone</name>
    <message>
        <source>You&apos;re all set.</source>
        <translation>Alles bereit.</translation>
    </message>
    <message>
        <source>Look for the system stats in your menu bar.</source>
        <translation>Sie finden die Systemwerte in der Leiste.</translation>
    </message>
    <message>
        <source>Start Using meterkin</source>
        <translation>meterkin verwenden</translation>
    </message>
</context>
<context>
    <name>OnboardingWelcome</name>
    <message>
        <source>Welcome to meterkin</source>
        <translation>Willkommen bei meterkin</translation>
    </message>
    <message>
        <source>Monitor CPU usage, memory pressure, and fan speed at a glance.</source>
        <translation>CPU-Auslastung, Speicherbelegung und Lüfterdrehzahl auf einen Blick.</translation>
    </message>
    <message>
        <source>Color-coded thresholds tell you when your %1 is working hard.</source>
        <translation>Farbige Schwellenwerte zeigen, wann Ihr %1 viel zu tun hat.</translation>
    </message>
    <message>
        <source>Get alerts when system metrics cross your configured thresholds.</source>
        <translation>Warnungen, sobald Systemwerte die von Ihnen gewählten Schwellen überschreiten.</translation>
    </message>
    <message>
        <source>Get Started</source>
        <translation>Los geht’s</translation>
    </message>
</context>
<context>
    <name>Platform</name>
    <message>
        <source>computer</source>
        <translation>Computer</translation>
    </message>
</context>
<context>
    <name>PortalRegistrar</name>
    <message>
        <source>Open the meterkin dashboard</source>
        <translation>Übersicht von meterkin öffnen</translation>
    </message>
</context>
<context>
    <name>ProgressLine</name>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
</context>
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Usage: %1</source>
        <translation>Aufruf: %1</translation>
    </message>
    <message>
        <source>[options]</source>
        <translation>[Optionen]</translation>
    </message>
    <message>
        <source>Options:</source>
        <translation>Optionen:</translation>
    </message>
    <message>
        <source>Unknown option &apos;%1&apos;.</source>
        <translation>Unbekannte Option „%1“.</translation>
    </message>
    <message>
        <source>Unknown options: %1.</source>
        <translation>Unbekannte Optionen: %1.</translation>
    </message>
    <message>
        <source>Unexpected value after &apos;%1&apos;.</source>
        <translation>Unerwarteter Wert nach „%1“.</translation>
    </message>
</context>
<context>
    <name>QGuiApplication</name>
    <message>
        <source>QT_LAYOUT_DIRECTION</source>
        <extracomment>Which way the language is written: RTL (right to left) or LTR.</extracomment>
        <translation>LTR</translation>
    </message>
</context>
<context>
    <name>ReleaseNotes</name>
    <message>
        <source>Release notes</source>
        <translation>Versionshinweise</translation>
    </message>
</context>
<context>
    <name>RestartOffer</name>
    <message>
        <source>Meterkin was updated</source>
        <translation>Meterkin wurde aktualisiert</translation>
    </message>
    <message>
        <source>Choose this notification to restart it.</source>
        <translation>Zum Neustarten diese Benachrichtigung anklicken.</translation>
    </message>
</context>
<context>
    <name>StorageNote</name>
    <message>
        <source>Changes cannot be stored and last until you quit: %1</source>
        <translation>Änderungen lassen sich nicht speichern und gelten nur bis zum Beenden: %1</translation>
    </message>
</context>
<context>
    <name>TabBar</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Thresholds</source>
        <translation>Schwellenwerte</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>Warnungen</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Info</translation>
    </message>
</context>
<context>
    <name>TextFile</name>
    <message>
        <source>the disk is full</source>
        <translation>der Datenträger ist voll</translation>
    </message>
    <message>
        <source>Permission denied</source>
        <translation>keine Berechtigung</translation>
    </message>
    <message>
        <source>Read-only file system</source>
        <translation>das Dateisystem ist schreibgeschützt</translation>
    </message>
    <message>
        <source>the link leads nowhere</source>
        <translation>die Verknüpfung führt ins Leere</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>nicht lesbar</translation>
    </message>
    <message>
        <source>too large</source>
        <translation>zu groß</translation>
    </message>
    <message>
        <source>its folder cannot be created</source>
        <translation>der Ordner lässt sich nicht anlegen</translation>
    </message>
    <message>
        <source>write-protected</source>
        <translation>schreibgeschützt</translation>
    </message>
</context>
<context>
    <name>ThresholdSection</name>
    <message>
        <source>Green below:</source>
        <translation>Grün unter:</translation>
    </message>
    <message>
        <source>Yellow below:</source>
        <translation>Gelb unter:</translation>
    </message>
    <message>
        <source>Yellow will not appear: green reaches as far or further.</source>
        <translation>Gelb erscheint nicht: Grün reicht ebenso weit oder weiter.</translation>
    </message>
</context>
<context>
    <name>ThresholdSettings</name>
    <message>
        <source>No fans found on this computer.</source>
        <translation>Auf diesem Computer wurden keine Lüfter gefunden.</translation>
    </message>
</context>
<context>
    <name>UpdateDialog</name>
    <message>
        <source>meterkin Update</source>
        <translation>meterkin – Update</translation>
    </message>
</context>
<context>
    <name>UpdateProblem</name>
    <message>
        <source>There was not enough memory to update.</source>
        <translation>Der Arbeitsspeicher reichte für das Update nicht aus.</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>Es besteht keine Netzwerkverbindung.</translation>
    </message>
    <message>
        <source>This system&apos;s package manager cannot update a single program. Update the whole system instead.</source>
        <translation>Die Paketverwaltung dieses Systems kann kein einzelnes Programm aktualisieren. Aktualisieren Sie stattdessen das ganze System.</translation>
    </message>
    <message>
        <source>The update does not carry a signature that this computer trusts. Nothing was installed.</source>
        <translation>Das Update trägt keine Signatur, der dieser Computer vertraut. Es wurde nichts installiert.</translation>
    </message>
    <message>
        <source>The update could not be downloaded. Check the network connection and try again.</source>
        <translation>Das Update konnte nicht heruntergeladen werden. Prüfen Sie die Netzwerkverbindung und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>This update is no longer available. Check again.</source>
        <translation>Dieses Update ist nicht mehr verfügbar. Suchen Sie erneut.</translation>
    </message>
    <message>
        <source>The update does not go together with other packages that are installed on this computer.</source>
        <translation>Das Update verträgt sich nicht mit anderen Paketen, die auf diesem Computer installiert sind.</translation>
    </message>
    <message>
        <source>Another program is installing or updating software. Try again when it is done.</source>
        <translation>Ein anderes Programm installiert oder aktualisiert gerade Software. Versuchen Sie es erneut, wenn es fertig ist.</translation>
    </message>
    <message>
        <source>The update asks for a licence to be accepted. Install it with the system&apos;s software manager.</source>
        <translation>Für das Update muss eine Lizenz angenommen werden. Installieren Sie es mit der Softwareverwaltung des Systems.</translation>
    </message>
    <message>
        <source>The downloaded update is damaged. Try again later.</source>
        <translation>Das heruntergeladene Update ist beschädigt. Versuchen Sie es später erneut.</translation>
    </message>
    <message>
        <source>The system&apos;s package manager holds this update back.</source>
        <translation>Die Paketverwaltung des Systems hält dieses Update zurück.</translation>
    </message>
    <message>
        <source>There is not enough free space on the disk.</source>
        <translation>Auf dem Datenträger ist nicht genug Platz frei.</translation>
    </message>
    <message>
        <source>You were not given the permission to install updates.</source>
        <translation>Sie haben keine Berechtigung zum Installieren von Updates erhalten.</translation>
    </message>
    <message>
        <source>An earlier installation was interrupted. Finish it with the system&apos;s package manager first.</source>
        <translation>Eine frühere Installation wurde unterbrochen. Schließen Sie diese zuerst mit der Paketverwaltung des Systems ab.</translation>
    </message>
    <message>
        <source>PackageKit ended before it was done. Try again.</source>
        <translation>PackageKit wurde vorzeitig beendet. Versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>PackageKit does not answer. Try again later.</source>
        <translation>PackageKit antwortet nicht. Versuchen Sie es später erneut.</translation>
    </message>
    <message>
        <source>The package manager gave no reason.</source>
        <translation>Die Paketverwaltung hat keinen Grund genannt.</translation>
    </message>
    <message>
        <source>The package manager says: %1</source>
        <translation>Die Paketverwaltung meldet: %1</translation>
    </message>
    <message>
        <source>Meterkin was not installed as a package, so PackageKit cannot update it.</source>
        <translation>Meterkin wurde nicht als Paket installiert, daher kann PackageKit es nicht aktualisieren.</translation>
    </message>
    <message>
        <source>The update would remove or replace other software (%1). Install it with the system&apos;s software manager.</source>
        <translation>Das Update würde andere Software entfernen oder ersetzen (%1). Installieren Sie es mit der Softwareverwaltung des Systems.</translation>
    </message>
</context>
<context>
    <name>UpdateView</name>
    <message>
        <source>Checking for updates…</source>
        <translation>Suche nach Updates …</translation>
    </message>
    <message>
        <source>You&apos;re up to date!</source>
        <translation>Alles auf dem neuesten Stand!</translation>
    </message>
    <message>
        <source>A new version of Meterkin is available!</source>
        <translation>Neue Version von Meterkin verfügbar!</translation>
    </message>
    <message>
        <source>Downloading update…</source>
        <translation>Update wird heruntergeladen …</translation>
    </message>
    <message>
        <source>Installing update…</source>
        <translation>Update wird installiert …</translation>
    </message>
    <message>
        <source>%1 is installed.</source>
        <translation>%1 ist installiert.</translation>
    </message>
    <message>
        <source>Updates could not be checked for.</source>
        <translation>Die Suche nach Updates ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>The update could not be installed.</source>
        <translation>Das Update wurde nicht installiert.</translation>
    </message>
    <message>
        <source>You have %1.</source>
        <translation>Derzeit läuft %1.</translation>
    </message>
    <message>
        <source>%1 is the latest version.</source>
        <translation>%1 ist die neueste Version.</translation>
    </message>
    <message>
        <source>%1 is downloaded and ready to install.</source>
        <translation>%1 ist heruntergeladen und kann installiert werden.</translation>
    </message>
    <message>
        <source>%1 can be installed now.</source>
        <translation>%1 kann jetzt installiert werden.</translation>
    </message>
    <message>
        <source>It takes effect when Meterkin is restarted.</source>
        <translation>Die neue Version läuft nach einem Neustart von Meterkin.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installieren</translation>
    </message>
    <message>
        <source>Restart Now</source>
        <translation>Jetzt neu starten</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Erneut versuchen</translation>
    </message>
</context>
<context>
    <name>UpdaterController</name>
    <message>
        <source>This app</source>
        <translation>Dieses Programm</translation>
    </message>
    <message>
        <source>You&apos;re up to date!</source>
        <translation>Alles auf dem neuesten Stand!</translation>
    </message>
    <message>
        <source>%1 is the latest version.</source>
        <translation>%1 ist die neueste Version.</translation>
    </message>
</context>
<context>
    <name>WindowPluginLoader</name>
    <message>
        <source>Meterkin cannot show its windows</source>
        <translation>Meterkin kann seine Fenster nicht anzeigen</translation>
    </message>
    <message>
        <source>A part of it, or of Qt, is missing on this computer.</source>
        <translation>Auf diesem Computer fehlt ein Teil des Programms oder von Qt.</translation>
    </message>
</context>
</TS>
