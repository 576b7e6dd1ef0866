#!/usr/bin/python3
"""Reads the windows over AT-SPI, as a screen reader does, and presses what it can press.

usage: screen_reader_test.py FOLDER-OF-THE-PROGRAMS
"""

import os
import re
import signal
import sys
import unittest

from private_desktop import PrivateDesktop, eventually

PROGRAMS = sys.argv.pop() if len(sys.argv) > 1 else ""


class ScreenReader(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.desktop = PrivateDesktop(PROGRAMS)
        cls.addClassCleanup(cls.desktop.end)
        os.environ.update(cls.desktop.environment)
        # Only now: the library looks for its bus when it is loaded.
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi, GLib
        cls.atspi, cls.glib = Atspi, GLib
        Atspi.init()
        cls.events = []
        cls.listener = Atspi.EventListener.new(
            lambda event: cls.events.append((event.type, event.source.get_name())))
        for kind in ("object:property-change:accessible-name", "object:announcement", "object:alert"):
            cls.listener.register(kind)
        cls.drive = cls.desktop.start_drive()
        cls.tell("smeter 148")
        cls.kestrum = cls.desktop.start([cls.desktop.path("Kestrum"), "--start-logging"])

    @classmethod
    def tell(cls, line):
        cls.drive.stdin.write(line + "\n")
        cls.drive.stdin.flush()

    @classmethod
    def parts(cls, program):
        """Everything below the windows of a program, as it stands now."""
        context = cls.glib.MainContext.default()
        while context.iteration(False):
            pass
        root = cls.atspi.get_desktop(0)
        found = []

        def walk(part):
            part.clear_cache()
            found.append(part)
            for i in range(part.get_child_count()):
                child = part.get_child_at_index(i)
                if child is not None:
                    walk(child)

        try:
            for i in range(root.get_child_count()):
                app = root.get_child_at_index(i)
                if app is not None and app.get_name() == program:
                    walk(app)
        except cls.glib.Error:
            return []  # it was being built or has gone meanwhile
        return found

    def named(self, pattern, role=None, program="Kestrum"):
        """The first part whose whole name matches; waited for."""
        def look():
            for part in self.parts(program):
                try:
                    if re.fullmatch(pattern, part.get_name() or "") and role in (None, part.get_role_name()):
                        return part
                except self.glib.Error:
                    continue
            return None
        return eventually(look, f"{role or 'a part'} named {pattern!r} in {program}")

    def press(self, part):
        """Runs the action that a screen reader offers as a press."""
        for i in range(part.get_n_actions()):
            if part.get_action_name(i).lower() == "press":
                self.assertTrue(part.do_action(i))
                return
        self.fail(f"{part.get_name()} cannot be pressed")

    def test_1_lamps_values_and_needle_are_read(self):
        self.named(r"Logging, \d+ of 100, .*", "push button")
        self.named(r"GPS fix, \d+ s old", "push button")
        self.named(r"Rig, Done, FT840, Com1=.*", "push button")
        self.named(r"S9\+?", "label")
        self.named(r"\d+(\.\d+)? km", "label")
        self.named(r"\d{3}°", "label")
        needle = self.named(r"Needle \d+ degrees")
        self.assertRegex(needle.get_name(), r"Needle ([012]?\d?\d|3[0-5]\d) degrees")
        bar = self.named("Signal", "progress bar")
        self.assertEqual(bar.get_current_value(), 148)

    def field_strength(self):
        """The label whose press takes the next unit, and the unit that it shows."""
        label = self.named(r"-?[\d.]+ (uV|mV/m|dBm)", "push button")
        return label, label.get_name().split()[-1]

    def other_unit(self, before):
        return eventually(lambda: self.field_strength()[1] != before, "another unit than " + before)

    def test_2_a_label_is_pressed(self):
        self.press(self.field_strength()[0])  # the first press in a run gives uV whatever was shown
        eventually(lambda: self.field_strength()[1] == "uV", "uV")
        self.press(self.field_strength()[0])
        self.other_unit("uV")

    def test_3_a_label_is_pressed_with_enter(self):
        label, unit = self.field_strength()
        eventually(label.grab_focus, "the focus on the field strength")
        focused = self.atspi.StateType.FOCUSED
        eventually(lambda: self.field_strength()[0].get_state_set().contains(focused), "the focus")
        self.atspi.generate_keyboard_event(0xFF0D, None, self.atspi.KeySynthType.SYM)  # Return
        self.other_unit(unit)

    def test_4_a_lamp_tells_its_change(self):
        self.events.clear()
        self.tell("silence")
        self.named(r"RIG SILENT, silent \d+ s", "push button")
        self.named(r"S0, no longer true")
        eventually(lambda: self.parts("Kestrum") and any(
            name.startswith("RIG SILENT") for kind, name in self.events), "an event of the lamp")
        self.tell("clear")
        self.named(r"Rig, Done, FT840, Com1=.*", "push button")

    def test_5_the_reader_tells_its_values(self):
        self.named(r"Latitude: \d+\.\d+[NS]", program="Posdex")
        self.named("Validity: A", program="Posdex")
        self.named(r"Receiver: .+", program="Posdex")

    def test_6_a_lamp_is_pressed(self):
        readers = [int(pid) for pid in os.listdir("/proc") if pid.isdigit() and self.is_reader(pid)]
        self.assertEqual(len(readers), 1)
        os.kill(readers[0], signal.SIGKILL)
        self.press(self.named(r"READER GONE, .*", "push button"))
        self.named(r"GPS fix, \d+ s old", "push button")

    def is_reader(self, pid):
        try:
            return os.readlink(f"/proc/{pid}/exe") == self.desktop.path("Posdex")
        except OSError:
            return False


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
