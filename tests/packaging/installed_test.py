#!/usr/bin/python3
"""Installs the program into an empty folder and uses what is there as a desktop does: reads its entry, and has D-Bus start
it, with a file.

Usage: installed_test.py CMAKE BUILD_FOLDER VERSION SAMPLE.pdf
Exits 77 when a tool is missing, and names it.
"""
import configparser
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest
import xml.etree.ElementTree as xml

from PIL import Image

ID = "example.tallyfold.Tallyfold"
PATIENCE = 90  # Seconds; only a failure takes so long.
SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)
TOOLS = ("desktop-file-validate", "appstreamcli", "gapplication", "dbus-daemon", "Xvfb", "xdotool")
CMAKE, BUILD, VERSION, SAMPLE = sys.argv[1:] if len(sys.argv) == 5 else ("", "", "", "")


def install(*options, folder=None, **environment):
    subprocess.run([CMAKE, "--install", BUILD, *options], check=True, stdout=subprocess.DEVNULL, cwd=folder,
                   env={**os.environ, **environment})


def run(*command, environment=None):
    return subprocess.run(command, capture_output=True, text=True, timeout=PATIENCE, env=environment)


def wait_until(condition, what):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        found = condition()
        if found:
            return found
        time.sleep(0.05)
    raise AssertionError(f"waited in vain for {what}")


def groups_of(path):
    """The groups of a desktop entry or a service file."""
    parser = configparser.RawConfigParser(delimiters="=", strict=True)
    parser.optionxform = str
    with open(path, encoding="utf-8") as file:
        parser.read_file(file)
    return parser


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.work = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.work.cleanup)
        cls.prefix = os.path.join(cls.work.name, "prefix")
        install("--prefix", cls.prefix)

    def path(self, *names):
        return os.path.join(self.prefix, *names)

    def entry(self):
        return groups_of(self.path("share/applications", ID + ".desktop"))["Desktop Entry"]

    def service(self):
        return groups_of(self.path("share/dbus-1/services", ID + ".service"))["D-BUS Service"]


class Files(Installed):
    def test_all_that_belongs_to_the_program_is_there_and_nothing_else(self):
        found = sorted(os.path.relpath(os.path.join(folder, name), self.prefix)
                       for folder, _, names in os.walk(self.prefix) for name in names)
        pictures = [f"share/icons/hicolor/{size}x{size}/apps/{ID}.png" for size in SIZES]
        self.assertEqual(found, sorted(pictures + [
            "bin/tallyfold",
            "libexec/tallyfold/tallyfold-reader",
            f"share/applications/{ID}.desktop",
            f"share/dbus-1/services/{ID}.service",
            "share/doc/tallyfold/LICENSE",
            "share/doc/tallyfold/LICENSE.symbols",
            f"share/icons/hicolor/scalable/apps/{ID}.svg",
            f"share/icons/hicolor/symbolic/apps/{ID}-symbolic.svg",
            "share/man/man1/tallyfold.1",
            f"share/metainfo/{ID}.metainfo.xml",
        ]))

    def test_the_entry_is_valid_and_says_what_it_has_to(self):
        result = run("desktop-file-validate", self.path("share/applications", ID + ".desktop"))
        self.assertEqual((result.returncode, result.stdout + result.stderr), (0, ""))
        entry = self.entry()
        self.assertEqual(entry["Exec"], "tallyfold %F")
        self.assertEqual(entry["MimeType"], "application/pdf;")
        self.assertEqual(entry["Icon"], ID)
        self.assertEqual(entry["DBusActivatable"], "true")
        self.assertEqual(entry["StartupNotify"], "true")
        self.assertIn("Office", entry["Categories"].split(";"))

    def test_the_metainfo_is_valid_and_of_this_version(self):
        path = self.path("share/metainfo", ID + ".metainfo.xml")
        result = run("appstreamcli", "validate", "--no-net", "--no-color", path)
        self.assertEqual(result.returncode, 0, result.stdout)
        self.assertNotRegex(result.stdout, r"(?m)^[EW]:")
        root = xml.parse(path).getroot()
        self.assertEqual(root.findtext("id"), ID)
        self.assertEqual(root.findtext("launchable"), ID + ".desktop")
        self.assertEqual(root.findtext("name"), self.entry()["Name"])
        self.assertEqual(root.findtext("summary"), self.entry()["Comment"])
        self.assertEqual(root.find("releases/release").get("version"), VERSION)

    def test_the_pictures_show_the_icon_in_their_size(self):
        for size in SIZES:
            with Image.open(self.path(f"share/icons/hicolor/{size}x{size}/apps/{ID}.png")) as picture:
                self.assertEqual((picture.size, picture.mode), ((size, size), "RGBA"))
                self.assertEqual(picture.getpixel((0, 0))[3], 0, "the corner is not transparent")
                red, green, blue, alpha = picture.getpixel((size // 2, size // 4))
                self.assertTrue(alpha > 250 and red > 250 and green > 250 and blue > 250, "no paper where the icon has it")
                red, green, blue, alpha = picture.getpixel((size // 8, size // 2))
                self.assertTrue(alpha > 200 and blue > red + 100, "no blue ground where the icon has it")

    def test_the_manual_knows_every_option_and_the_version(self):
        with open(self.path("share/man/man1/tallyfold.1"), encoding="utf-8") as file:
            manual = file.read()
        self.assertIn(f'"Tallyfold {VERSION}"', manual)
        self.assertNotIn("@", manual)
        options = re.findall(r"(?<!\S)-{1,2}[a-z]*(?=[ ,])", run(self.path("bin/tallyfold"), "--help").stdout)
        self.assertGreaterEqual(len(options), 6)
        for option in options:
            self.assertRegex(manual.replace("\\-", "-"), r"(?m)^\.BR? .*" + re.escape(option) + r"\b|^\.B --$")

    def test_d_bus_starts_the_program_that_was_installed(self):
        service = self.service()
        self.assertEqual(service["Name"], ID)
        self.assertEqual(service["Exec"], self.path("bin/tallyfold") + " --service")

    def test_a_package_is_built_for_another_place_than_it_is_written_to(self):
        staging = os.path.join(self.work.name, "staging")
        install("--prefix", "/usr", DESTDIR=staging)
        service = groups_of(os.path.join(staging, "usr/share/dbus-1/services", ID + ".service"))["D-BUS Service"]
        self.assertEqual(service["Exec"], "/usr/bin/tallyfold --service")
        self.assertTrue(os.access(os.path.join(staging, "usr/bin/tallyfold"), os.X_OK))
        self.assertEqual(sorted(os.listdir(staging)), ["usr"])

    def test_a_place_given_from_here_is_written_from_the_root(self):
        install("--prefix", "here", folder=self.work.name)
        here = os.path.join(self.work.name, "here")
        service = groups_of(os.path.join(here, "share/dbus-1/services", ID + ".service"))["D-BUS Service"]
        self.assertEqual(service["Exec"], os.path.join(here, "bin/tallyfold") + " --service")


class Options(Installed):
    def setUp(self):
        self.program = self.path("bin/tallyfold")
        # Nobody to ask, and no screen.
        self.alone = {"PATH": os.environ["PATH"], "HOME": self.work.name,
                      "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere"}

    def test_the_version_needs_no_screen(self):
        result = run(self.program, "--version", environment=self.alone)
        self.assertEqual((result.returncode, result.stdout), (0, f"tallyfold {VERSION}\n"))

    def test_an_unknown_option_is_told_of(self):
        result = run(self.program, "-platform", "offscreen", "--colour", environment=self.alone)
        self.assertEqual(result.returncode, 64)
        self.assertIn("--colour", result.stderr)

    def test_a_service_without_a_bus_ends(self):
        result = run(self.program, "-platform", "offscreen", "--service", environment=self.alone)
        self.assertEqual(result.returncode, 69)
        self.assertIn("session bus", result.stderr)


class OnADesktop(Installed):
    """A session with a screen and a bus that knows what is installed, and nothing else."""

    def setUp(self):
        home = os.path.join(self.work.name, "home" + str(time.monotonic_ns()))
        os.makedirs(home, mode=0o700)
        read, write = os.pipe()
        self.start(["Xvfb", "-displayfd", str(write), "-screen", "0", "1400x1000x24", "-nolisten", "tcp", "-noreset"],
                   dict(os.environ), pass_fds=[write])
        os.close(write)
        with os.fdopen(read) as number:
            display = ":" + number.readline().strip()
        self.environment = {"PATH": os.environ["PATH"], "HOME": home, "XDG_RUNTIME_DIR": home, "LC_ALL": "C.UTF-8",
                            "XDG_DATA_DIRS": self.path("share"), "DISPLAY": display, "QT_QPA_PLATFORM": "xcb"}
        bus = self.start(["dbus-daemon", "--session", "--nofork", "--print-address"], self.environment,
                         stdout=subprocess.PIPE)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().decode().strip()
        self.addCleanup(self.end_programs)

    def start(self, command, environment, **options):
        child = subprocess.Popen(command, stderr=subprocess.DEVNULL, env=environment, **options)

        def stop():
            child.kill()
            child.wait()
            if child.stdout:
                child.stdout.close()
        self.addCleanup(stop)
        return child

    def end_programs(self):
        for identity in self.programs():
            os.kill(identity, signal.SIGKILL)

    def processes(self, program):
        """The running processes that were started by the whole path `program`."""
        found = []
        for name in filter(str.isdigit, os.listdir("/proc")):
            try:
                with open(f"/proc/{name}/cmdline", "rb") as file:
                    if file.read().split(b"\0")[0] == os.fsencode(program):
                        found.append(int(name))
            except OSError:
                pass  # It has ended.
        return found

    def programs(self):
        return self.processes(self.path("bin/tallyfold"))

    def readers(self):
        return self.processes(self.path("libexec/tallyfold/tallyfold-reader"))

    def ask(self, *arguments):
        result = run("gapplication", *arguments, environment=self.environment)
        self.assertEqual(result.returncode, 0, result.stderr)

    def windows(self):
        """The windows that can be seen of the class that the entry names, by their titles."""
        wm_class = self.entry()["StartupWMClass"]
        found = run("xdotool", "search", "--onlyvisible", "--class", f"^{wm_class}$", environment=self.environment)
        return sorted(run("xdotool", "getwindowname", window, environment=self.environment).stdout.strip()
                      for window in found.stdout.split())

    def test_a_desktop_starts_it_once_and_shows_it_once(self):
        self.assertEqual(self.programs(), [])
        self.ask("launch", ID)
        both = ["Tallyfold", "Welcome to Tallyfold"]
        wait_until(lambda: self.windows() == both, f"the window and its welcome: {self.windows()}")
        programs = self.programs()
        self.assertEqual(len(programs), 1)
        self.ask("launch", ID)
        direct = run(self.path("bin/tallyfold"), environment=self.environment)
        self.assertEqual(direct.returncode, 0, direct.stderr)
        self.assertEqual(self.windows(), both)
        self.assertEqual(self.programs(), programs)
        os.kill(programs[0], signal.SIGTERM)
        wait_until(lambda: not self.programs(), "the program to end")

    def test_a_desktop_opens_a_file_which_the_installed_reader_reads(self):
        self.ask("launch", ID, SAMPLE)
        wait_until(lambda: "Tallyfold" in self.windows(), "the window")
        wait_until(self.readers, "the reader that was installed")
        os.kill(self.programs()[0], signal.SIGTERM)
        wait_until(lambda: not self.programs() and not self.readers(), "the program and its reader to end")


if __name__ == "__main__":
    missing = [tool for tool in TOOLS if not shutil.which(tool)]
    if missing:
        print("skipped: not installed: " + ", ".join(missing))
        sys.exit(77)
    unittest.main(argv=sys.argv[:1])
