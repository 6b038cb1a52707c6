#!/usr/bin/python3
"""Does the whole job with the keyboard alone and reads it as a screen reader does, through AT-SPI: adds files, puts them in
another order, changes a place of the stamp, chooses the folder, stamps, reads the result and starts the next production.
Nothing is looked at: what has the focus, what is announced and what stands on a page are asked of the accessibility bus.

Usage: by_ear.py TALLYFOLD SAMPLE.pdf SAMPLE.pdf
The first has three pages and an earlier number, the second one page.
Exits 77 where there is no X server or no accessibility bus to be had.
"""
import os
import shutil
import subprocess
import sys
import tempfile
import time

from whole_program import Failed, Session, add_folder, choose_output, expect, text_of, wait_until

MOST_STEPS = 60  # Of the Tab key; there are fewer controls.
REPEATS = 15000  # Of three pages, in a production that takes long enough to be followed.


class Reader:
    """What a screen reader knows of the program."""

    def __init__(self, session):
        # It looks for the bus when it is loaded.
        os.environ.update({key: session.environment[key] for key in
                           ("DISPLAY", "HOME", "XDG_RUNTIME_DIR", "DBUS_SESSION_BUS_ADDRESS")})
        import pyatspi  # pylint: disable=import-outside-toplevel
        self.pyatspi = pyatspi
        self.session = session
        self.heard = []  # Texts that appeared as notifications, and names of windows.
        self.chosen = []  # Names of the rows that were told to be chosen.
        self.progress = []  # Shares of the work that were told to be done, as a reader asks for them then.
        pyatspi.Registry.registerEventListener(self.hear, "object:state-changed:showing", "window:activate",
                                               "object:state-changed:selected", "object:selection-changed",
                                               "object:property-change:accessible-value")
        self.program = wait_until(self.find_program, "the program on the accessibility bus")

    def find_program(self):
        self.listen()
        return next((item for item in self.pyatspi.Registry.getDesktop(0) if item and item.name == "tallyfold"), None)

    def hear(self, event):
        try:
            role = event.source.getRoleName()
            if event.type.startswith("object:state-changed") and role == "notification" and event.detail1:
                self.heard.append(event.source.name)
            elif event.type.startswith("window"):
                self.heard.append(f"{event.source.name}: {event.source.description}")
            elif event.type.startswith("object:state-changed:selected") and event.detail1:
                self.chosen.append(event.source.name)
            elif event.type.startswith("object:selection-changed"):
                self.chosen += [item.name for item in self.selected(event.source)]
            elif role == "progress bar":
                self.progress.append(self.share(event.source))
        except Exception:  # pylint: disable=broad-except
            pass  # What it told of is gone already.

    def listen(self):
        from gi.repository import GLib  # pylint: disable=import-outside-toplevel
        while GLib.MainContext.default().iteration(False):
            pass

    def wait(self, condition, what):
        def holds():
            self.listen()
            try:
                return condition()
            except Exception as error:  # pylint: disable=broad-except
                if isinstance(error, Failed):
                    raise
                return None  # Something went while it was asked.
        try:
            return wait_until(holds, what)
        except Failed as failure:
            raise Failed(f"{failure}; in focus is {self.describe(self.focus())}; heard were {self.heard[-8:]}") from None

    def describe(self, item):
        return f"{item.getRoleName()} {item.name!r}" if item else "nothing"

    def selected(self, container):
        """What is chosen in a list: its chosen children, or itself where it is one of them."""
        return [item for item in [container, *container] if item and self.is_in(item, self.pyatspi.STATE_SELECTED)]

    def share(self, bar):
        """How far a progress bar is, from 0 to 1."""
        value = bar.queryValue()
        return (value.currentValue - value.minimumValue) / (value.maximumValue - value.minimumValue)

    def is_in(self, item, state):
        return item.getState().contains(state)

    def all(self, item=None):
        """Everything that shows, from the windows down."""
        for child in item or self.program:
            if child and self.is_in(child, self.pyatspi.STATE_SHOWING):
                yield child
                yield from self.all(child)

    def items(self, role):
        return [item for item in self.all() if item.getRoleName() == role]

    def find(self, role, name):
        return next((item for item in self.items(role) if item.name == name), None)

    def focus(self):
        """What has the focus: the innermost, as a row of a list. The current row of a list says that it has the focus also
        while the list has not."""
        found = None
        for item in self.all():
            if self.is_in(item, self.pyatspi.STATE_FOCUSED) and (
                    item.getRoleName() != "list item" or self.is_in(item.parent, self.pyatspi.STATE_FOCUSED)):
                found = item
        return found

    def label(self, item):
        """What names `item`: its label, if it has one, else itself."""
        for relation in item.getRelationSet():
            if relation.getRelationType() == self.pyatspi.RELATION_LABELLED_BY:
                return relation.getTarget(0).name
        return item.name

    def tab_to(self, role, name, key="Tab"):
        """Goes on with the Tab key until something of `role` has the focus whose name begins with `name`, or whose label
        it is."""
        met = []
        for _ in range(MOST_STEPS):
            focus = self.wait(self.focus, "a focus")
            if focus.getRoleName() == role and (focus.name.startswith(name) or self.label(focus) == name):
                return focus
            met.append(self.describe(focus))
            self.session.key(key)
            time.sleep(0.05)
        raise Failed(f"the Tab key did not come to the {role} {name!r}, but to {met}")

    def wait_for_focus(self, role, name):
        def has_focus():
            focus = self.focus()
            return focus if focus and focus.getRoleName() == role and focus.name.startswith(name) else None
        return self.wait(has_focus, f"the focus on the {role} {name!r}")

    def wait_to_hear(self, text):
        self.wait(lambda: any(text in heard for heard in self.heard), f"{text!r} to be announced")


def rows(reader):
    return [item.name for item in reader.items("list item")]


def begin(session, reader, sources):
    session.wait_for("Welcome to Tallyfold")
    reader.wait_for_focus("push button", "Get Started")
    expect(reader.find("heading", "Welcome to Tallyfold"), "the title of the welcome is no heading")
    session.key("Return")
    session.wait_for("Tallyfold")
    add_folder(session, sources)
    reader.wait(lambda: len(rows(reader)) == 2, "two files in the list")
    reader.wait_to_hear("One file already seems to carry a Bates number")
    headings = [item.name for item in reader.items("heading")]
    for title in ("Numbering", "Placement and look", "Legend and page numbers", "Cover pages and order", "Output"):
        expect(title in headings, f"{title!r} is not among the headings {headings}")


def reorder(session, reader):
    reader.tab_to("combo box", "File order")
    session.type("As")
    reader.wait(lambda: reader.find("combo box", "As listed (drag to reorder)"), "the order of the user")
    reader.tab_to("list item", "a.pdf", key="shift+Tab")
    session.key("Home")
    reader.wait_for_focus("list item", "a.pdf, 3 pages, ABC000001")
    reader.chosen.clear()
    session.key("space")
    reader.wait(lambda: any(name.startswith("a.pdf") for name in reader.chosen), "the chosen row to be told")
    row = reader.focus()
    expect(reader.is_in(row, reader.pyatspi.STATE_SELECTED), f"{row.name!r} does not say that it is chosen")
    other = next(item for item in reader.items("list item") if item.name.startswith("b.pdf"))
    expect(not reader.is_in(other, reader.pyatspi.STATE_SELECTED), "b.pdf says that it is chosen")
    session.key("alt+Down")
    reader.wait(lambda: [name[:5] for name in rows(reader)] == ["b.pdf", "a.pdf"], "a.pdf behind b.pdf")
    reader.wait_for_focus("list item", "a.pdf")


def place(session, reader):
    reader.tab_to("heading", "Numbering")
    session.key("space")
    closed = reader.find("heading", "Numbering")
    reader.wait(lambda: not reader.is_in(closed, reader.pyatspi.STATE_EXPANDED), "the section to be closed")
    session.key("space")
    reader.wait(lambda: reader.is_in(closed, reader.pyatspi.STATE_EXPANDED), "the section to be open")
    spot = reader.tab_to("radio button", "Bottom right")
    group = spot.parent
    while group and group.getRoleName() != "panel":
        group = group.parent
    expect(group and group.name == "Bates number", "the places are in no group of their name")
    session.key("Up")
    spot = reader.wait_for_focus("radio button", "Top right")
    reader.wait(lambda: reader.is_in(spot, reader.pyatspi.STATE_CHECKED), "the place to be chosen")
    reader.wait(lambda: any("Stamp: ABC000002 (Top right)" in item.description for item in reader.items("image")),
                "the stamp of a picture")


def outgrow(session, reader):
    """A warning is announced when it appears, and when it comes to say something else."""
    reader.tab_to("text", "Start number", key="shift+Tab")
    session.type("999999")
    reader.wait_to_hear("Numbers reach ABC1000002,")
    session.type("9")
    reader.wait_to_hear("Numbers reach ABC10000002,")
    session.key("ctrl+a")
    session.type("1")


def stamp(session, reader, output):
    choose_output(session, output)
    session.open_with("ctrl+Return", "Production written")
    reader.wait_to_hear("Production written: 2 stamped copies")
    reader.wait_for_focus("push button", "Done")
    reader.wait(lambda: reader.find("label", "Bates range: ABC000001 – ABC000004"), "the range")
    expect(reader.find("heading", "Production written"), "the title of the result is no heading")
    numbers = text_of(os.path.join(output, "b.pdf"))
    expect("ABC000001" in numbers, "b.pdf was not numbered first")


def start_next(session, reader):
    session.key("shift+Tab")
    reader.wait_for_focus("push button", "Start Next Production")
    session.key("space")
    session.wait_for("Tallyfold")
    reader.wait(lambda: not rows(reader), "the list to be empty")
    field = reader.tab_to("text", "Start number")
    text = field.queryText()
    expect(text.getText(0, -1) == "5", f"the next production starts at {text.getText(0, -1)}")


def stamp_next(session, reader, work, sample):
    """The next production of the series, long enough for its progress to be followed."""
    sources, output = os.path.join(work, "more"), os.path.join(work, "next")
    os.makedirs(sources)
    os.makedirs(output)
    subprocess.run(["qpdf", "--empty", "--pages", sample, ",".join(["1-z"] * REPEATS), "--",
                    os.path.join(sources, "long.pdf")], check=True)
    pages = REPEATS * 3
    add_folder(session, sources)
    reader.wait(lambda: len(rows(reader)) == 1, "the long file in the list")
    choose_output(session, output)
    reader.progress.clear()
    session.key("ctrl+Return")
    reader.wait(lambda: any(0 < share < 1 for share in reader.progress), "the progress to be told on the way")
    session.wait_for("Production written")
    reader.wait_to_hear("Production written: 1 stamped copy")
    told = [share for share in reader.progress if share]  # None where it was asked for too late, or before the first page.
    expect(told == sorted(told), f"the progress goes back: {told}")
    reader.wait(lambda: reader.find("label", f"Bates range: ABC000005 – ABC{pages + 4:06}"), "the range that goes on")
    session.key("Return")
    session.wait_for("Tallyfold")


def help_pages(session, reader):
    session.open_with("F1", "Help")
    reader.wait(lambda: any(item.getRoleName() == "heading" for item in reader.all()), "a heading in the help")


def use(session, reader, work, samples):
    sources, output = os.path.join(work, "sources"), os.path.join(work, "output")
    os.makedirs(sources)
    os.makedirs(output)
    for name, sample in zip(("a.pdf", "b.pdf"), samples):
        shutil.copy(sample, os.path.join(sources, name))
    begin(session, reader, sources)
    reorder(session, reader)
    place(session, reader)
    outgrow(session, reader)
    stamp(session, reader, output)
    start_next(session, reader)
    stamp_next(session, reader, work, samples[0])
    help_pages(session, reader)


def missing():
    """What is not there to run this with; empty for nothing."""
    for tool in ("Xvfb", "openbox", "xdotool", "dbus-daemon", "qpdf"):
        if not shutil.which(tool):
            return f"{tool} is not installed"
    if not os.path.exists("/usr/share/dbus-1/services/org.a11y.Bus.service"):
        return "there is no accessibility bus (at-spi2-core)"
    try:
        import importlib.util  # pylint: disable=import-outside-toplevel
        return "" if importlib.util.find_spec("pyatspi") else "python3-pyatspi is not installed"
    except ImportError:
        return "python3-pyatspi is not installed"


def main():
    program, *samples = (os.path.abspath(path) for path in sys.argv[1:])
    if missing():
        print(f"skipped: {missing()}")
        return 77
    with tempfile.TemporaryDirectory() as work:
        home = os.path.join(work, "home")
        os.makedirs(home, mode=0o700)
        session = Session(program, home, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        try:
            use(session, Reader(session), work, samples)
        except Failed as failure:
            print(failure)
            return 1
        finally:
            session.close()
    print("a production, by keyboard and by ear")
    return 0


if __name__ == "__main__":
    sys.exit(main())
