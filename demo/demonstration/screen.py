"""A screen of its own: virtual display, window manager, session bus.

Nothing of the user's desktop is touched, several screens can stand at once, and everything that was
started for one is gone with it.
"""

import os
import shutil
import signal
import subprocess
import tempfile
import time


# Seconds. Only what never comes is waited for so long, however busy the machine is.
PATIENCE = 180


class Screen:
    """While it is open, the environment of this process names its display and its bus."""

    def __init__(self, width=800, height=600):
        self.width = width
        self.height = height
        self._started = []
        self._before = dict(os.environ)

    def __enter__(self):
        self._home = tempfile.mkdtemp(prefix="tarvo-screen-")
        os.environ["DISPLAY"] = f":{self._start_display()}"
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self._start_bus()
        self._start_window_manager()
        os.environ.update(
            HOME=self._home,
            XDG_RUNTIME_DIR=self._home,
            XDG_DATA_HOME=os.path.join(self._home, "data"),
            XDG_CONFIG_HOME=os.path.join(self._home, "config"),
            QT_QPA_PLATFORM="xcb",
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
            LC_ALL="C.UTF-8",
            CUPS_SERVER=os.path.join(self._home, "no-printer"),  # nothing comes out on paper
        )
        # Programs that the launcher starts have nobody to watch their exit code.
        for name in ("ASAN_OPTIONS", "UBSAN_OPTIONS"):
            options = [os.environ.get(name), f"log_path={self._home}/sanitizer"]
            os.environ[name] = ":".join(filter(None, options))
        os.environ.pop("WAYLAND_DISPLAY", None)
        os.environ.pop("QT_SCALE_FACTOR", None)
        return self

    def __exit__(self, kind, *_):
        reports = self._sanitizer_reports()
        for process in reversed(self._started):
            process.send_signal(signal.SIGTERM)
            try:
                process.wait(5)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        os.environ.clear()
        os.environ.update(self._before)
        shutil.rmtree(self._home, ignore_errors=True)
        if reports and kind is None:
            raise RuntimeError(reports)

    def _sanitizer_reports(self):
        reports = []
        for entry in os.scandir(self._home):
            if entry.name.startswith("sanitizer"):
                with open(entry.path, errors="replace") as report:
                    reports.append(report.read())
        return "\n".join(reports)

    @property
    def scale(self):
        """Pixels of the display for a design pixel."""
        return min(self.width / 800, self.height / 600)

    def design_to_screen(self, x, y):
        """Place on the display of a point of the 800 by 600 picture."""
        scale = self.scale
        left = (self.width - 800 * scale) / 2
        top = (self.height - 600 * scale) / 2
        return round(left + x * scale), round(top + y * scale)

    def _start(self, command, **options):
        process = subprocess.Popen(
            command, stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            **{"stdout": subprocess.DEVNULL, **options})
        self._started.append(process)
        return process

    def _start_display(self):
        # The server picks a free number itself and says which; asking beforehand would be a race.
        read_end, write_end = os.pipe()
        self._start(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0",
             f"{self.width}x{self.height}x24", "-nolisten", "tcp",
             # Otherwise the end of its only client starts the server anew, and takes who comes then along.
             "-noreset"],
            pass_fds=[write_end])
        os.close(write_end)
        with os.fdopen(read_end) as answer:
            number = answer.readline().strip()
        if not number:
            raise RuntimeError("the virtual display did not start")
        return number

    def _start_window_manager(self):
        manager = self._start(["openbox", "--sm-disable"])
        # A window that comes before its manager would be placed by nobody.
        end = time.monotonic() + PATIENCE
        while manager.poll() is None and time.monotonic() < end:
            answer = subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"],
                                    capture_output=True, text=True, check=False)
            if "window id" in answer.stdout:
                return
            time.sleep(0.05)
        raise RuntimeError("the window manager did not start")

    def _start_bus(self):
        bus = self._start(
            ["dbus-daemon", "--session", "--nofork", "--print-address=1"],
            stdout=subprocess.PIPE, text=True)
        with bus.stdout as answer:
            address = answer.readline().strip()
        if not address:
            raise RuntimeError("the session bus did not start")
        return address
