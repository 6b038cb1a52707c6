#!/usr/bin/python3
"""Uses the built program as a person does: in a window on a screen of its own, with keys, from the first launch to the
second production of a series; and starts it a second time, which has to hand its files to the first.

Usage: whole_program.py TALLYFOLD SAMPLE.pdf
Exits 77 when there is no X server to be had.
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time

PATIENCE = 90  # Seconds; only a failure takes so long.


class Failed(Exception):
    pass


def wait_until(condition, what):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        found = condition()
        if found:
            return found
        time.sleep(0.05)
    raise Failed(f"waited in vain for {what}")


class Session:
    """A screen with a window manager and a session bus, and the program on it."""

    def __init__(self, program, home, *arguments, before=None, **variables):
        """Starts `program` with `arguments`, and with `variables` of the environment besides those of the session.
        `before` is called first, with the address of the session's bus."""
        self.program = program
        self.children = []
        read, write = os.pipe()
        self.start(["Xvfb", "-displayfd", str(write), "-screen", "0", "1400x1000x24", "-nolisten", "tcp",
                    "-noreset"],
                   pass_fds=[write])
        os.close(write)
        with os.fdopen(read) as number:
            display = ":" + number.readline().strip()
        # Nothing of the session that the test runs in: no desktop, no style, no settings of its user.
        self.environment = {key: value for key, value in os.environ.items()
                            if not key.startswith(("XDG_", "QT_", "DBUS_", "WAYLAND_", "GTK_", "KDE_", "GNOME_"))}
        self.environment.update(DISPLAY=display, HOME=home, XDG_RUNTIME_DIR=home, LC_ALL="C.UTF-8",
                                QT_QPA_PLATFORM="xcb")
        bus = self.start(["dbus-daemon", "--session", "--nofork", "--print-address"], stdout=subprocess.PIPE)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().decode().strip()
        self.start(["openbox"], stdout=subprocess.DEVNULL)
        wait_until(lambda: self.xdotool("get_num_desktops").isdigit(), "the window manager")
        self.environment.update(variables)
        if before:
            before(self.environment["DBUS_SESSION_BUS_ADDRESS"])
        self.main = self.start([program, *arguments])

    def start(self, command, **options):
        child = subprocess.Popen(command, stderr=subprocess.DEVNULL, env=getattr(self, "environment", None), **options)
        self.children.append(child)
        return child

    def close(self):
        for child in reversed(self.children):
            child.kill()
            child.wait()

    def xdotool(self, *arguments):
        result = subprocess.run(["xdotool", *arguments], env=self.environment, capture_output=True, text=True,
                                timeout=PATIENCE)
        return result.stdout.strip()

    def active_title(self):
        window = self.xdotool("getactivewindow")
        return self.xdotool("getwindowname", window) if window else ""

    def has_focus(self, title):
        active = self.active_title()
        if not active:
            # The window manager may sleep over what came while it started; and a window may just have gone, which a
            # click would settle.
            self.xdotool("set_desktop", "0")
            self.xdotool("search", "--onlyvisible", "--name", "^" + title, "windowactivate")
        return active.startswith(title)

    def wait_for(self, title):
        """Until a window whose title begins with `title` has the focus."""
        wait_until(lambda: self.has_focus(title), f"the window {title!r}")

    def open_with(self, key, title):
        """Presses `key` until it has opened the window called `title`: keys are lost while windows change places."""
        def opens():
            self.key(key)
            end = time.monotonic() + 2
            while time.monotonic() < end:
                if self.has_focus(title):
                    return True
                time.sleep(0.05)
            return False
        wait_until(opens, f"the window {title!r}")

    def drag(self, start, end):
        """Drags with the mouse from one point of the active window to another, as a hand does: not all at once."""
        window = self.xdotool("getactivewindow")
        self.xdotool("mousemove", "--window", window, *map(str, start))
        self.xdotool("mousedown", "1")
        steps = 12
        for step in range(1, steps + 1):
            point = [round(a + (b - a) * step / steps) for a, b in zip(start, end)]
            self.xdotool("mousemove", "--window", window, *map(str, point))
            time.sleep(0.02)
        self.xdotool("mouseup", "1")

    def key(self, *keys):
        self.xdotool("key", "--clearmodifiers", *keys)

    def type(self, text):
        self.xdotool("type", "--delay", "4", text)


def add_folder(session, folder):
    session.open_with("ctrl+o", "Add PDFs")
    session.key("ctrl+l")
    session.type(folder)
    session.key("Return")  # Goes there,
    session.key("Return")  # and takes it.
    session.wait_for("Tallyfold")


def choose_output(session, folder):
    session.open_with("ctrl+shift+o", "Output Folder")
    session.key("ctrl+a")
    session.type(folder)
    session.key("Return")
    session.wait_for("Tallyfold")


def text_of(path, *options):
    return subprocess.run(["pdftotext", *options, path, "-"], capture_output=True, text=True, check=True).stdout


def expect(condition, what):
    if not condition:
        raise Failed(what)


def use(session, work, sample):
    sources, first, second = (os.path.join(work, name) for name in ("sources", "first", "second"))
    for folder in (os.path.join(sources, "deeper"), first, second):
        os.makedirs(folder)
    shutil.copy(sample, os.path.join(sources, "a.pdf"))
    shutil.copy(sample, os.path.join(sources, "deeper", "b.pdf"))
    pages = int(re.search(r"Pages:\s+(\d+)",
                          subprocess.run(["pdfinfo", sample], capture_output=True, text=True, check=True).stdout)[1])

    session.wait_for("Welcome to Tallyfold")
    session.key("Return")
    session.wait_for("Tallyfold")

    add_folder(session, sources)
    session.key("Tab", "Tab")  # From the list over the title of the first section into the prefix.
    session.type("ACME")
    session.key("Tab", "Tab", "Tab", "Tab", "Tab")  # To the spots of the number.
    session.key("Up")  # From the bottom right to the top right.
    session.key(*["Tab"] * 11)  # To the order of the files, by name so far.
    session.type("As")
    session.drag((60, 115), (60, 400))  # The first file behind the second.
    choose_output(session, first)
    session.open_with("ctrl+Return", "Production written")
    expect(sorted(os.listdir(first)) == ["Production Index.csv", "a.pdf", "b.pdf"], f"copies: {os.listdir(first)}")
    expect("ACME000001" in text_of(os.path.join(first, "b.pdf")),
           "a.pdf was not dragged behind b.pdf: " + text_of(os.path.join(first, "b.pdf"))[-300:])
    expect(f"ACME{pages + 1:06}" in text_of(os.path.join(first, "a.pdf")), "a.pdf does not go on with the numbers")
    word = re.search(r'yMin="([\d.]+)"[^>]*>ACME000001<', text_of(os.path.join(first, "b.pdf"), "-bbox"))
    expect(word and float(word[1]) < 60, "the number is not at the top")

    session.key("shift+Tab")  # From Done to Start Next Production.
    session.key("space")
    session.wait_for("Tallyfold")
    add_folder(session, sources)
    choose_output(session, second)
    session.open_with("ctrl+Return", "Production written")
    numbers = text_of(os.path.join(second, "a.pdf")) + text_of(os.path.join(second, "b.pdf"))
    expect(f"ACME{2 * pages + 1:06}" in numbers and f"ACME{4 * pages:06}" in numbers, "the series does not go on")
    session.key("Return")
    session.wait_for("Tallyfold")

    # A second start hands its files over and ends; the window that was closed comes back.
    extra = os.path.join(work, "extra.pdf")
    shutil.copy(sample, extra)
    session.key("ctrl+w")
    wait_until(lambda: session.active_title() != "Tallyfold", "the window to close")
    expect(session.main.poll() is None, "closing the window ended the program")
    other = session.start([session.program, extra])
    wait_until(lambda: other.poll() is not None, "the second start to end")
    expect(other.returncode == 0, f"the second start ended with {other.returncode}")
    session.wait_for("Tallyfold")
    third = os.path.join(work, "third")
    os.makedirs(third)
    choose_output(session, third)
    session.open_with("ctrl+Return", "Production written")
    expect("extra.pdf" in os.listdir(third), f"the file handed over is not in {os.listdir(third)}")
    session.key("Return")
    session.wait_for("Tallyfold")
    session.key("ctrl+q")
    wait_until(lambda: session.main.poll() is not None, "the program to end")
    expect(session.main.returncode == 0, f"the program ended with {session.main.returncode}")


def main():
    program, sample = (os.path.abspath(path) for path in sys.argv[1:])
    for tool in ("Xvfb", "openbox", "xdotool", "dbus-daemon"):
        if not shutil.which(tool):
            print(f"skipped: {tool} is not installed")
            return 77
    with tempfile.TemporaryDirectory() as work:
        home = os.path.join(work, "home")
        os.makedirs(home, mode=0o700)
        session = Session(program, home)
        try:
            use(session, work, sample)
        except Failed as failure:
            print(failure)
            picture = os.environ.get("TALLYFOLD_PICTURE")
            if picture:
                subprocess.run(["import", "-window", "root", picture], env=session.environment, check=False)
            return 1
        finally:
            session.close()
    print("three productions, one handed over from a second start")
    return 0


if __name__ == "__main__":
    sys.exit(main())
