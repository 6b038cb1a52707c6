#!/usr/bin/python3
"""Ends the built program in the middle of a production, as happens when its user logs out.

Usage: ended_in_a_run.py TALLYFOLD

Asked to end, the program stops after its page and ends by itself, and nothing is half written. Where its screen goes away
it cannot do that, and at most one hidden file is left. Either way what has a name is whole and the same each time, no index
speaks of what is not there, and the sources are what they were. Exits 77 when there is no X server to be had.
"""
import hashlib
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time

from whole_program import Failed, Session, add_folder, choose_output, expect, wait_until

FILES = 60
PAGES = 3000  # Of each file: a page takes so little that many are needed for a run to be met.


def write_sources(folder):
    """Files of many pages, all alike."""
    os.makedirs(folder)
    first = os.path.join(folder, "000.pdf")
    objects = ["<</Type/Catalog/Pages 2 0 R>>",
               f"<</Type/Pages/Count {PAGES}/Kids[{' '.join(f'{number} 0 R' for number in range(3, PAGES + 3))}]>>"]
    objects += ["<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]>>"] * PAGES
    body = "".join(f"{number} 0 obj\n{syntax}\nendobj\n" for number, syntax in enumerate(objects, 1))
    with open(first + ".raw", "w", encoding="ascii") as file:
        file.write("%PDF-1.7\n" + body + "trailer\n<</Root 1 0 R>>\n")
    # It has no table of places yet, of which is warned.
    subprocess.run(["qpdf", "--warning-exit-0", first + ".raw", first], stderr=subprocess.DEVNULL, check=True)
    os.unlink(first + ".raw")
    for number in range(1, FILES):
        shutil.copy(first, os.path.join(folder, f"{number:03}.pdf"))


def digests_of(folder):
    digests = {}
    for name in os.listdir(folder):
        with open(os.path.join(folder, name), "rb") as file:
            digests[name] = hashlib.sha256(file.read()).hexdigest()
    return digests


def copies_in(folder):
    return [name for name in os.listdir(folder) if name.endswith(".pdf") and not name.startswith(".")]


def ask_to_end(session):
    session.main.terminate()


def close_the_terminal(session):
    session.main.send_signal(signal.SIGHUP)


def take_the_screen_away(session):
    session.children[0].kill()  # The X server.


def begin(session, output):
    """Begins to stamp, and waits for the first copy. Keys are lost while windows change places; one more does nothing in a
    production."""
    def is_begun():
        session.key("ctrl+Return")
        patience = time.monotonic() + 2
        while not copies_in(output) and time.monotonic() < patience:
            time.sleep(0.01)
        return copies_in(output)
    wait_until(is_begun, "the first copy")


def left_after(end, session, sources, output):
    """Stamps `sources` into `output` and ends the program once it has written a copy; what is in the folder then."""
    before = digests_of(sources)
    begin(session, output)
    end(session)
    wait_until(lambda: session.main.poll() is not None, "the program to end")
    hidden = [name for name in os.listdir(output) if name.startswith(".tallyfold-")]
    if end is take_the_screen_away:
        expect(len(hidden) <= 1, f"left is {hidden}")
    else:
        expect(session.main.returncode == 0, f"the program ended with {session.main.returncode}")
        expect(not hidden, f"left is {hidden}")
    copies = copies_in(output)
    expect(sorted(os.listdir(output)) == sorted(copies + hidden), f"there is more than copies: {os.listdir(output)}")
    expect(len(copies) < FILES, "the production was over before it could be ended")
    expect(digests_of(sources) == before, "a source was changed")
    for copy in copies:
        checked = subprocess.run(["qpdf", "--check", os.path.join(output, copy)], stdout=subprocess.DEVNULL, check=False)
        expect(checked.returncode == 0, f"{copy} is not whole")
    return {name: digest for name, digest in digests_of(output).items() if name in copies}


def use(session, work, end):
    sources, output = os.path.join(work, "sources"), os.path.join(work, end.__name__)
    os.makedirs(output)
    session.wait_for("Welcome to Tallyfold")
    session.key("Return")
    session.wait_for("Tallyfold")
    add_folder(session, sources)
    choose_output(session, output)
    return left_after(end, session, sources, output)


def main():
    program = os.path.abspath(sys.argv[1])
    for tool in ("Xvfb", "openbox", "xdotool", "dbus-daemon", "qpdf"):
        if not shutil.which(tool):
            print(f"skipped: {tool} is not installed")
            return 77
    written = {}
    with tempfile.TemporaryDirectory() as work:
        write_sources(os.path.join(work, "sources"))
        for end in (ask_to_end, close_the_terminal, take_the_screen_away):
            home = os.path.join(work, "home of " + end.__name__)
            os.makedirs(home, mode=0o700)
            session = Session(program, home)
            try:
                copies = use(session, work, end)
                expect(all(written.setdefault(name, copies[name]) == copies[name] for name in copies),
                       "copies differ from those of another run")
                print(f"{end.__name__.replace('_', ' ')}: {len(copies)} of {FILES} copies, all whole")
            except Failed as failure:
                print(f"{end.__name__.replace('_', ' ')}: {failure}")
                return 1
            finally:
                session.close()
    return 0


if __name__ == "__main__":
    sys.exit(main())
