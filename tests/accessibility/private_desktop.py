"""A display, a session bus and a folder with the programs, all of their own."""

import os
import shutil
import subprocess
import tempfile
import time

PATIENCE_S = 40

CONFIG = [
    "Kestrum Auto field strenght logger V1.02", " 2  1  9600 ", " 200 ", " 2 ", " 1 ", " 0 ", " 600  600 ",
    " 600  600 ", " 9 ", " 1 ", "#TRUE#", "#TRUE#", "#FALSE#", "#FALSE#", "#FALSE#", "5157.00N", "00532.00E",
    "25 m", "3630", "{folder}/Calibration3.cfg", "{folder}/RSSI-GPS.log", "&Off", "Antenna1, PWR 10W"]


def eventually(condition, what):
    """Polls until the condition gives something; what it gave."""
    end = time.monotonic() + PATIENCE_S
    while True:
        outcome = condition()
        if outcome:
            return outcome
        if time.monotonic() > end:
            raise AssertionError("never came: " + what)
        time.sleep(0.05)


class PrivateDesktop:
    def __init__(self, programs):
        self.folder = tempfile.mkdtemp(prefix="kestrum-")
        self.programs = programs
        self.running = []
        os.mkdir(self.path("run"), 0o700)
        self.environment = dict(os.environ, XDG_RUNTIME_DIR=self.path("run"), HOME=self.folder, LC_ALL="C.UTF-8",
                                QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        self.environment.pop("KESTRUM_COM1", None)
        display = self.start(["Xvfb", "-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp"],
                             reads=True)
        self.environment["DISPLAY"] = ":" + display.stdout.readline().strip()
        bus = self.start(["dbus-daemon", "--session", "--nofork", "--print-address=1",
                          "--address=unix:path=" + self.path("bus")], reads=True)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()

    def path(self, name):
        return os.path.join(self.folder, name)

    def start(self, words, reads=False):
        child = subprocess.Popen(words, env=self.environment, cwd=self.folder, text=True,
                                 stdin=subprocess.PIPE, stdout=subprocess.PIPE if reads else subprocess.DEVNULL,
                                 stderr=subprocess.DEVNULL if reads else None)
        self.running.append(child)
        return child

    def start_drive(self):
        """The rig and the receiver of a simulated drive, and the configuration for them."""
        for program in ("Kestrum", "Posdex", "drivesim"):
            shutil.copy2(os.path.join(self.programs, program), self.path(program))
        with open(self.path("posdex.conf"), "w", encoding="ascii") as settings:
            settings.write("source=serial:gps@4800\n")
        with open(self.path("Kestrum.cfg"), "w", encoding="ascii", newline="") as config:
            config.write("".join(line.format(folder=self.folder) + "\r\n" for line in CONFIG))
        drive = self.start([self.path("drivesim"), "--dir", self.folder, "--rig", "FT840"], reads=True)
        assert "ready" in drive.stdout.readline(), "drivesim did not start"
        return drive

    def end(self):
        for child in reversed(self.running):
            if child.poll() is None:
                child.terminate()
                try:
                    child.wait(10)
                except subprocess.TimeoutExpired:
                    child.kill()
                    child.wait()
        shutil.rmtree(self.folder, ignore_errors=True)
