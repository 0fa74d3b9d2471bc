"""Other monitors of processors and memory, set to show both every three seconds, to measure the
program beside."""
import subprocess
from pathlib import Path

from marked_processes import marked_processes
from panels import write


def i3status(desktop):
    settings = write(desktop.folder / "i3status.conf", """
        general {
            colors = false
            interval = 3
            output_format = "none"
        }
        order += "cpu_usage"
        order += "memory"
        cpu_usage { format = "CPU %usage" }
        memory { format = "MEM %used / %total" }
        """)
    return desktop.spawn(["i3status", "-c", settings], "i3status", stdout=subprocess.DEVNULL).pid


def polybar(desktop):
    settings = write(desktop.folder / "monitor.ini", """
        [bar/monitor]
        width = 100%
        height = 24
        bottom = true
        font-0 = DejaVu Sans:size=10
        modules-right = cpu memory

        [module/cpu]
        type = internal/cpu
        interval = 3
        label = CPU %percentage%%

        [module/memory]
        type = internal/memory
        interval = 3
        label = MEM %percentage_used%%
        """)
    return desktop.spawn(["polybar", "-c", settings, "monitor"], "polybar").pid


def conky(desktop):
    settings = write(desktop.folder / "conky.conf", """
        conky.config = {
            update_interval = 3, own_window = true, own_window_type = 'dock', double_buffer = true,
            use_xft = true, font = 'DejaVu Sans:size=10', alignment = 'middle_middle',
            minimum_width = 300, minimum_height = 20, cpu_avg_samples = 1,
        }
        conky.text = [[CPU ${cpu}% MEM ${memperc}%]]
        """)
    return desktop.spawn(["conky", "-c", settings], "conky").pid


def xfce4_systemload(desktop):
    """In the panel that runs already, as its fifth plugin, which is a process of its own."""
    if not list(Path("/usr/lib").glob("**/xfce4/panel/plugins/libsystemload.so")):
        raise FileNotFoundError("xfce4-systemload-plugin is not installed")
    desktop.run("xfce4-panel", "--add=systemload")
    for key, kind, value in (("timeout", "uint", "3000"), ("swap/enabled", "bool", "false"),
                             ("network/enabled", "bool", "false"),
                             ("uptime/enabled", "bool", "false")):
        desktop.run("xfconf-query", "-c", "xfce4-panel", "-p", f"/plugins/plugin-5/{key}",
                    "-n", "-t", kind, "-s", value)

    def process():
        return next((pid for pid in marked_processes(str(desktop.folder))
                     if b"libsystemload" in Path(f"/proc/{pid}/cmdline").read_bytes()), None)
    return desktop.wait(process, what="the plugin's process")


PEERS = {       # and the Debian packages that they come from
    "i3status": (i3status, "i3status"),
    "polybar": (polybar, "polybar"),
    "conky": (conky, "conky-std"),
    "xfce4-systemload": (xfce4_systemload, "xfce4-systemload-plugin"),
}


def start_peers(desktop):
    """Starts what is installed of them, under a panel of Xfce; process numbers by name. Names the
    others."""
    found = {}
    for name, (start, package) in PEERS.items():
        try:
            found[name] = start(desktop)
        except FileNotFoundError:
            print(f"missing: {name}, of the Debian package {package}", flush=True)
    return found
