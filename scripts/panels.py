"""The panels a private desktop can have: for each its settings, written with a tray and a plain
look, its command, and how its tray makes itself known."""
import json
import subprocess
import textwrap
from pathlib import Path
from typing import Callable, NamedTuple

HEIGHT = 26
XEMBED, NOTIFIER = "XEmbed", "StatusNotifierItem"


class Panel(NamedTuple):
    configure: Callable     # (environment, folder for files of its own) -> command
    tray: str = ""          # the protocol that it is here to be tested with
    session: str = "openbox"


def write(path, text):
    path = Path(path)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(textwrap.dedent(text).lstrip())
    return str(path)


def xfce4(environment, folder, mode=0):
    write(f"{environment['XDG_CONFIG_HOME']}/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", f"""
        <?xml version="1.0" encoding="UTF-8"?>
        <channel name="xfce4-panel" version="1.0">
          <property name="configver" type="int" value="2"/>
          <property name="panels" type="array">
            <value type="int" value="1"/>
            <property name="panel-1" type="empty">
              <property name="position" type="string" value="p=6;x=0;y=0"/>
              <property name="position-locked" type="bool" value="true"/>
              <property name="mode" type="uint" value="{mode}"/>
              <property name="length" type="uint" value="100"/>
              <property name="size" type="uint" value="{HEIGHT}"/>
              <property name="plugin-ids" type="array">
                <value type="int" value="1"/>
                <value type="int" value="2"/>
                <value type="int" value="3"/>
                <value type="int" value="4"/>
              </property>
            </property>
          </property>
          <property name="plugins" type="empty">
            <property name="plugin-1" type="string" value="tasklist"/>
            <property name="plugin-2" type="string" value="separator">
              <property name="expand" type="bool" value="true"/>
              <property name="style" type="uint" value="0"/>
            </property>
            <property name="plugin-3" type="string" value="systray">
              <property name="square-icons" type="bool" value="false"/>
            </property>
            <property name="plugin-4" type="string" value="clock"/>
          </property>
        </channel>
        """)
    return ["xfce4-panel", "--disable-wm-check"]


def xfce4_left(environment, folder):
    return xfce4(environment, folder, mode=1)


def mate(environment, folder, side="top"):
    def applet(name, kind, position):
        return f"""
        [org/mate/panel/objects/{name}]
        object-type='applet'
        applet-iid='{kind}'
        toplevel-id='top'
        panel-right-stick=true
        position={position}
        """
    write(f"{folder}/dconf/mate", f"""
        [org/mate/panel/general]
        toplevel-id-list=['top']
        object-id-list=['clock', 'tray']

        [org/mate/panel/toplevels/top]
        orientation='{side}'
        expand=true
        size={HEIGHT}
        screen=0
        """ + applet("clock", "ClockAppletFactory::ClockApplet", 0)
          + applet("tray", "NotificationAreaAppletFactory::NotificationArea", 10))
    database = Path(environment["XDG_CONFIG_HOME"]) / "dconf" / "user"
    database.parent.mkdir(parents=True, exist_ok=True)
    subprocess.run(["dconf", "compile", database, f"{folder}/dconf"], check=True, env=environment)
    return ["mate-panel"]


def mate_left(environment, folder):
    return mate(environment, folder, "left")


def lxqt(environment, folder):
    write(f"{environment['XDG_CONFIG_HOME']}/lxqt/lxqt.conf", """
        [General]
        theme=frost
        icon_theme=Adwaita
        """)
    settings = write(f"{folder}/lxqt-panel.conf", f"""
        [General]
        __userfile__=true
        panels=panel1

        [panel1]
        plugins=taskbar, statusnotifier, worldclock
        position=Bottom
        panelSize={HEIGHT}
        iconSize=22
        width=100
        width-percent=true

        [taskbar]
        type=taskbar

        [statusnotifier]
        type=statusnotifier

        [worldclock]
        type=worldclock
        """)
    return ["lxqt-panel", "-c", settings]


def tint2(environment, folder):
    settings = write(f"{folder}/tint2rc", f"""
        rounded = 0
        border_width = 0
        background_color = #202428 100

        panel_items = TSC
        panel_size = 100% {HEIGHT}
        panel_position = bottom center horizontal
        panel_layer = top
        panel_padding = 4 2 4
        panel_background_id = 1
        wm_menu = 0
        systray_padding = 0 0 4
        time1_format = %H:%M
        time1_font = DejaVu Sans 9
        clock_font_color = #ffffff 100
        """)
    return ["tint2", "-c", settings]


def i3_settings(environment, folder):
    """Both the window manager and its bar read this."""
    return write(f"{folder}/i3", """
        # i3 config file (v4)
        font pango:DejaVu Sans 9
        focus_follows_mouse no
        bar {
            id tray
            position bottom
            tray_output screen
            # the desktop starts the bar, so that it can end and restart it
            i3bar_command true
        }
        """)


def i3bar(environment, folder):
    return ["i3bar", "--bar_id=tray", f"--socket={environment['I3SOCK']}"]


def polybar(environment, folder):
    settings = write(f"{folder}/polybar.ini", f"""
        [bar/main]
        width = 100%
        height = {HEIGHT}
        bottom = true
        background = #202428
        foreground = #ffffff
        font-0 = DejaVu Sans:size=9;2
        modules-left = clock
        tray-position = right
        tray-maxsize = {HEIGHT}

        [module/clock]
        type = internal/date
        date = %H:%M
        """)
    return ["polybar", "-c", settings, "main"]


def waybar(environment, folder):
    settings = write(f"{folder}/waybar.json", json.dumps({
        "layer": "top", "position": "bottom", "height": HEIGHT,
        "modules-right": ["tray", "clock"], "tray": {"icon-size": 20, "spacing": 8}}))
    style = write(f"{folder}/waybar.css", """
        * { font-family: "DejaVu Sans"; font-size: 12px; border-radius: 0; }
        window#waybar { background: #202428; color: #ffffff; }
        #tray, #clock { padding: 0 6px; }
        """)
    return ["waybar", "-c", settings, "-s", style]


def swaybar(environment, folder):
    return ["swaybar", "-b", "tray", "-s", environment["SWAYSOCK"]]


PANELS = {
    "xfce4": Panel(xfce4, XEMBED),
    "xfce4-left": Panel(xfce4_left, XEMBED),
    "mate": Panel(mate, XEMBED),
    "mate-left": Panel(mate_left, XEMBED),
    "lxqt": Panel(lxqt, NOTIFIER),
    "tint2": Panel(tint2, XEMBED),
    "i3bar": Panel(i3bar, XEMBED, "i3"),
    "polybar": Panel(polybar, XEMBED),
    "waybar": Panel(waybar, NOTIFIER, "sway"),
    "swaybar": Panel(swaybar, NOTIFIER, "sway"),
}


def is_on_wayland(panel):
    return panel in PANELS and PANELS[panel].session == "sway"
