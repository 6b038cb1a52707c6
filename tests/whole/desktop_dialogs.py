#!/usr/bin/python3
"""Chooses files in the dialogs of a desktop: a portal of the test's own stands on the session's bus, Qt's theme for portals asks
it, and it answers as a user would. Names are given byte by byte there, so one that is no valid text comes back whole; a name that
leads to no file is told.

Usage: desktop_dialogs.py TALLYFOLD SAMPLE.pdf
Exits 77 where there is no X server, or Qt's theme for portals is not installed. QT_PLUGIN_PATH says where else it may be.
"""
import glob
import os
import queue
import shutil
import subprocess
import sys
import tempfile
import threading
import time
import urllib.parse

from whole_program import Failed, Session, expect, text_of, wait_until

PORTAL = "/org/freedesktop/portal/desktop"
FILE_CHOOSER = """
<node><interface name="org.freedesktop.portal.FileChooser">
  <method name="OpenFile">
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="a{sv}" direction="in"/>
    <arg type="o" direction="out"/>
  </method>
  <property name="version" type="u" access="read"/>
</interface></node>"""


def uri(path):
    return "file://" + urllib.parse.quote(os.fsencode(path))


class Portal:
    """The portal of file dialogs: it is asked once for each answer that was put ready."""

    def __init__(self, address):
        from gi.repository import Gio, GLib  # pylint: disable=import-outside-toplevel
        self.gio, self.glib = Gio, GLib
        self.answers = queue.Queue()
        self.asked = []  # Title and options of each dialog.
        flags = Gio.DBusConnectionFlags
        self.bus = Gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)
        interface = Gio.DBusNodeInfo.new_for_xml(FILE_CHOOSER).interfaces[0]
        self.bus.register_object(PORTAL, interface, self.ask, lambda *_: GLib.Variant("u", 3), None)
        Gio.bus_own_name_on_connection(self.bus, "org.freedesktop.portal.Desktop", 0, None, None)
        threading.Thread(target=GLib.MainLoop().run, daemon=True).start()

    def ask(self, _bus, sender, _path, _interface, _method, parameters, invocation):
        _window, title, options = parameters.unpack()
        handle = f"{PORTAL}/request/{sender[1:].replace('.', '_')}/{options['handle_token']}"
        invocation.return_value(self.glib.Variant("(o)", (handle,)))
        self.asked.append((title, options))
        uris = self.answers.get()
        answer = (0, {"uris": self.glib.Variant("as", uris)}) if uris else (1, {})

        def tell():  # Not before the program listens.
            self.bus.emit_signal(None, handle, "org.freedesktop.portal.Request", "Response",
                                 self.glib.Variant("(ua{sv})", answer))
        self.glib.timeout_add(300, tell)

    def ask_by(self, session, keys, *paths):
        """Presses `keys` until they have opened a dialog, which gives `paths`; its title and options. Keys are lost while the
        one before it closes."""
        count = len(self.asked)
        self.answers.put([uri(path) for path in paths])

        def is_asked():
            session.key(*keys)
            end = time.monotonic() + 2
            while time.monotonic() < end and len(self.asked) == count:
                time.sleep(0.05)
            return len(self.asked) > count
        wait_until(is_asked, f"dialog {count + 1} of the desktop")
        return self.asked[count]


def use(session, portal, work, sample):
    sources, folder, output = (os.path.join(work, name) for name in ("sources", "folder", "output"))
    for made in (sources, folder, output):
        os.makedirs(made)
    odd = os.fsencode(sources) + b"/odd\xff.pdf"
    for path in (odd, os.path.join(sources, "a.pdf"), os.path.join(folder, "b.pdf")):
        shutil.copy(sample, path)
    session.wait_for("Welcome to Tallyfold")
    session.key("Return")
    session.wait_for("Tallyfold")

    title, options = portal.ask_by(session, ["ctrl+o"], os.path.join(sources, "a.pdf"), odd)
    expect(title == "Add PDFs" and options["multiple"] and not options["directory"], f"asked was {title} {options}")
    expect(options["filters"][0][1] == [(0, "*.[pP][dD][fF]")], f"files are filtered by {options['filters']}")
    title, options = portal.ask_by(session, ["alt+f", "f"], folder)
    expect(title == "Add Folder" and options["directory"], f"asked was {title} {options}")
    portal.ask_by(session, ["ctrl+o"], os.path.join(sources, "gone.pdf"))
    session.wait_for("Something went wrong")
    session.key("Return")
    session.wait_for("Tallyfold")
    portal.ask_by(session, ["ctrl+shift+o"])  # And it is cancelled.
    title, options = portal.ask_by(session, ["ctrl+shift+o"], output)
    expect(title == "Output Folder" and options["directory"], f"asked was {title} {options}")
    session.open_with("ctrl+Return", "Production written")
    copies = sorted(os.listdir(output))
    expect(copies == ["Production Index.csv", "a.pdf", "b.pdf", "odd\ufffd.pdf"], f"copies: {copies}")
    expect("ABC000001" in text_of(os.path.join(output, "a.pdf")), "the first file has no number")


def theme_is_there(path):
    queried = subprocess.run(["qtpaths6", "--query", "QT_INSTALL_PLUGINS"], capture_output=True, text=True, check=False) \
        if shutil.which("qtpaths6") else None
    folders = path.split(os.pathsep) + ([queried.stdout.strip()] if queried else []) + glob.glob("/usr/lib*/*/qt6/plugins")
    return any(os.path.exists(os.path.join(folder, "platformthemes", "libqxdgdesktopportal.so")) for folder in folders if folder)


def main():
    program, sample = (os.path.abspath(path) for path in sys.argv[1:])
    for tool in ("Xvfb", "openbox", "xdotool", "dbus-daemon"):
        if not shutil.which(tool):
            print(f"skipped: {tool} is not installed")
            return 77
    plugins = os.environ.get("QT_PLUGIN_PATH", "")
    if not theme_is_there(plugins):
        print("skipped: qt6-xdgdesktopportal-platformtheme is not installed")
        return 77
    with tempfile.TemporaryDirectory() as work:
        home = os.path.join(work, "home")
        os.makedirs(home, mode=0o700)
        portal = []
        session = Session(program, home, before=lambda address: portal.append(Portal(address)),
                          QT_QPA_PLATFORMTHEME="xdgdesktopportal", QT_PLUGIN_PATH=plugins)
        try:
            use(session, portal[0], work, sample)
        except Failed as failure:
            print(failure)
            return 1
        finally:
            session.close()
    print("files, a folder and the output folder, chosen in the desktop's dialogs")
    return 0


if __name__ == "__main__":
    sys.exit(main())
