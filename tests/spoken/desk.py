"""A user who neither sees the screen nor knows where anything stands: finds controls by role and name, as a screen
reader tells them, goes there and types."""

import pathlib
import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 15  # seconds


class Missing(Exception):
    """What should be there is not."""


def wait_for(what, condition):
    until = time.monotonic() + PATIENCE
    while True:
        try:
            found = condition()
        except GLib.Error:  # it went while it was looked at
            found = None
        if found:
            return found
        if time.monotonic() > until:
            raise Missing(what)
        time.sleep(0.05)


def below(control):
    """The control and all that it holds, as far as it shows."""
    yield control
    for place in range(control.get_child_count()):
        child = control.get_child_at_index(place)
        if child is not None:
            yield from below(child)


def is_in(control, state):
    return control.get_state_set().contains(state)


class Desk:
    def __init__(self, program):
        Atspi.init()
        self.folder = pathlib.Path(program).parent
        self.process = subprocess.Popen([program])
        self.application = wait_for("the program among the applications", self._application)

    def _application(self):
        desktop = Atspi.get_desktop(0)
        for place in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(place)
            if application is not None and application.get_process_id() == self.process.pid:
                return application
        return None

    def windows(self):
        count = self.application.get_child_count()
        return [window for window in map(self.application.get_child_at_index, range(count))
                if window is not None and is_in(window, Atspi.StateType.SHOWING)]

    def window(self, name):
        """The window whose title begins like that."""
        return wait_for(f"window {name!r}",
                        lambda: next((w for w in self.windows() if w.get_name().startswith(name)), None))

    def gone(self, name):
        wait_for(f"the end of window {name!r}",
                 lambda: not any(w.get_name().startswith(name) for w in self.windows()))

    def controls(self, role=None):
        for window in self.windows():
            for control in below(window):
                if role is None or control.get_role_name() == role:
                    yield control

    def find(self, role, name, showing=True):
        def look():
            for control in self.controls(role):
                if control.get_name() == name and (not showing or is_in(control, Atspi.StateType.SHOWING)):
                    return control
            return None
        return wait_for(f"{role} {name!r}", look)

    def press(self, role, name):
        """Does what the control does when it is pressed. A menu's entry need not show for that."""
        control = self.find(role, name, showing=role != "menu item")
        actions = [control.get_action_name(place) for place in range(control.get_n_actions())]
        for action in ("Press", "Toggle"):
            if action in actions:
                control.do_action(actions.index(action))
                return
        raise Missing(f"a way to press {role} {name!r}: it has {actions}")

    def without(self, role, name):
        wait_for(f"the end of {role} {name!r}",
                 lambda: not any(control.get_name() == name and is_in(control, Atspi.StateType.SHOWING)
                                 for control in self.controls(role)))

    def focus(self, name):
        box = self.find("text", name)
        box.grab_focus()
        wait_for(f"the focus in {name!r}", lambda: is_in(box, Atspi.StateType.FOCUSED))

    def type(self, name, text):
        """Goes to a box and types; what stood there is chosen and goes."""
        self.focus(name)
        self.key("<Ctrl>a")
        Atspi.generate_keyboard_event(0, text, Atspi.KeySynthType.STRING)
        wait_for(f"{text!r} in {name!r}", lambda: self.text(name) == text)

    def put(self, name, text):
        """Puts a text into a box from outside, as a program does that takes dictation."""
        Atspi.EditableText.set_text_contents(self.find("text", name), text)

    def text(self, name):
        box = self.find("text", name)
        return Atspi.Text.get_text(box, 0, Atspi.Text.get_character_count(box))

    def reads(self, name, text):
        wait_for(f"{text!r} in {name!r}, not {self.text(name)!r}", lambda: self.text(name) == text)

    def tells(self, role, name, note):
        """What there is to tell of a control just now comes last in its description."""
        control = self.find(role, name)
        wait_for(f"{note!r} of {name!r}, not {control.get_description()!r}",
                 lambda: control.get_description().endswith(note))

    def key(self, keys):
        """Keys by their names, as "<Ctrl>a" or "F9"."""
        subprocess.run(["xdotool", "key", "--clearmodifiers", *keys.replace("<Ctrl>", "ctrl+").replace(
            "<Alt>", "alt+").replace("<Shift>", "shift+").split()], check=True)

    def end(self):
        self.process.terminate()
        self.process.wait(timeout=PATIENCE)


def run(job):
    desk = Desk(sys.argv[1])
    try:
        job(desk)
    except Missing as missing:
        print(f"MISSING {missing}")
        for window in desk.windows():
            print(f"in {window.get_role_name()} {window.get_name()!r}:")
            for control in below(window):
                if is_in(control, Atspi.StateType.SHOWING):
                    text = control.get_text_iface()
                    reads = "" if text is None else f" reads {Atspi.Text.get_text(control, 0, -1)!r}"
                    ticked = ", ticked" if is_in(control, Atspi.StateType.CHECKED) else ""
                    print(f"    {control.get_role_name()} {control.get_name()!r}{reads}{ticked}")
        desk.process.kill()
        sys.exit(1)
    desk.end()
