#!/usr/bin/python3
"""Ends the built program while it is at something that takes without end, and holds it to waiting for as little as it may: files
that are added are not waited for, nor is a preview, whatever they hang on, and its reader goes with the program; a production
stops after its page, but the name on the session's bus is given back before that, so that the next start is a program of its
own that others reach.

Usage: quitting.py TALLYFOLD STUCK_DISK.so SAMPLE.pdf
Exits 77 when there is no X server to be had.
"""
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time

from whole_program import Failed, Session, choose_output, expect, wait_until

NAME = "example.tallyfold.Tallyfold"


def ask_the_bus(session, method):
    answer = subprocess.run(["dbus-send", "--session", "--print-reply=literal", "--dest=org.freedesktop.DBus",
                             "/org/freedesktop/DBus", "org.freedesktop.DBus." + method, "string:" + NAME],
                            env=session.environment, capture_output=True, text=True, check=False)
    return answer.stdout.split()


def owner(session):
    """The process that has the program's name on the bus; 0 for none."""
    answer = ask_the_bus(session, "GetConnectionUnixProcessID")
    return int(answer[-1]) if answer else 0


def state_of(process):
    """The letter of the state of a process, "Z" for one that has ended; empty for none."""
    try:
        with open(f"/proc/{process}/stat", encoding="ascii") as file:
            return file.read().rsplit(")", 1)[1].split()[0]
    except OSError:
        return ""


def has_copy(reader):
    """Whether a reader has the stamped pages of a preview, which lie in memory, unlike what is added to the list."""
    try:
        return any(os.readlink(f"/proc/{reader}/fd/{number}").startswith("/memfd:document")
                   for number in os.listdir(f"/proc/{reader}/fd"))
    except OSError:
        return False


def time_of(process):
    """The processor time that a process has had, in seconds; 0 for none."""
    try:
        with open(f"/proc/{process}/stat", encoding="ascii") as file:
            return int(file.read().rsplit(")", 1)[1].split()[11]) / os.sysconf("SC_CLK_TCK")
    except OSError:
        return 0


def readers_of(process):
    found = []
    for task in os.listdir(f"/proc/{process}/task"):
        with open(f"/proc/{process}/task/{task}/children", encoding="ascii") as file:
            found += [int(child) for child in file.read().split()]
    return [child for child in found if state_of(child) not in ("", "Z")]


def waiting_threads(process):
    """How many threads of a process wait for the disk that does not answer."""
    count = 0
    for task in os.listdir(f"/proc/{process}/task"):
        try:
            with open(f"/proc/{process}/task/{task}/comm", encoding="utf-8") as file:
                count += file.read() == "stuck\n"
        except OSError:
            pass
    return count


def endless_page(path):
    """A PDF whose page takes without end to draw: a pattern of forms that draw forms, each the next ten times. Whoever only
    looks for text passes over patterns."""
    depth = 12
    content = "/Pattern cs /P scn 0 0 612 792 re f"
    objects = ["<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Count 1/Kids[3 0 R]>>",
               "<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]/Contents 4 0 R/Resources<</Pattern<</P 5 0 R>>>>>>",
               f"<</Length {len(content)}>>stream\n{content}\nendstream",
               "<</Type/Pattern/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 612 792]/XStep 612/YStep 792"
               "/Resources<</XObject<</F 6 0 R>>>>/Length 5>>stream\n/F Do\nendstream"]
    for level in range(depth):
        content = "/F Do " * 10 if level + 1 < depth else "0 0 9 9 re f"
        objects.append(f"<</Type/XObject/Subtype/Form/BBox[0 0 612 792]/Resources<</XObject<</F {7 + level} 0 R>>>>"
                       f"/Length {len(content)}>>stream\n{content}\nendstream")
    objects.append("null")
    body = "%PDF-1.7\n"
    places = []
    for number, syntax in enumerate(objects, 1):
        places.append(len(body))
        body += f"{number} 0 obj\n{syntax}\nendobj\n"
    table = "".join(f"{place:010} 00000 n \n" for place in places)
    with open(path, "w", encoding="ascii") as file:
        file.write(f"{body}xref\n0 {len(objects) + 1}\n0000000000 65535 f \n{table}"
                   f"trailer\n<</Root 1 0 R/Size {len(objects) + 1}>>\nstartxref\n{len(body)}\n%%EOF\n")


def end(session):
    session.main.terminate()
    wait_until(lambda: session.main.poll() is not None, "the program to end")
    expect(session.main.returncode == 0, f"the program ended with {session.main.returncode}")


def wait_for_preview(session, begun, what):
    """Files are read once the window was seen, which a window manager that has just started may sleep over."""
    def has_begun():
        found = begun()
        if not found:
            session.has_focus("Welcome to Tallyfold")
        return found
    return wait_until(has_begun, what)


def adding_from_a_stuck_disk(session, _):
    wait_for_preview(session, lambda: waiting_threads(session.main.pid) > 0, "the file to be read")
    end(session)
    expect(owner(session) == 0, "the name is still taken")


def preview_on_a_stuck_disk(session, _):
    wait_for_preview(session, lambda: waiting_threads(session.main.pid) > 0, "the preview to read")
    end(session)
    expect(owner(session) == 0, "the name is still taken")


def preview_that_takes_without_end(session, _):
    reader = wait_for_preview(session, lambda: next(filter(has_copy, readers_of(session.main.pid)), 0),
                              "the preview to be drawn")
    end(session)
    before = time_of(reader)
    while state_of(reader) not in ("", "Z"):
        if time_of(reader) > before + 0.2:  # One that was killed gets no more of it.
            os.kill(reader, signal.SIGKILL)
            raise Failed("the reader was left behind")


def production_on_a_stuck_disk(session, work):
    session.wait_for("Welcome to Tallyfold")
    session.key("Return")
    session.wait_for("Tallyfold")
    output = os.path.join(work, "output")
    os.makedirs(output)
    choose_output(session, output)
    wait_until(lambda: waiting_threads(session.main.pid) > 0, "the preview to read")
    previews = waiting_threads(session.main.pid)

    def is_writing():
        session.key("ctrl+Return")
        patience = time.monotonic() + 2
        while waiting_threads(session.main.pid) == previews and time.monotonic() < patience:
            time.sleep(0.01)
        return waiting_threads(session.main.pid) > previews
    wait_until(is_writing, "the production to read")
    expect(owner(session) == session.main.pid, "the program has no name")
    session.main.terminate()
    wait_until(lambda: owner(session) == 0, "the name to be given back")
    expect(session.main.poll() is None, "the production was not waited for")
    other = session.start([session.program])
    wait_until(lambda: owner(session) == other.pid, "the next start to take the name")
    third = session.start([session.program])
    wait_until(lambda: third.poll() is not None, "the third start to end")
    expect(third.returncode == 0 and other.poll() is None, "the third start did not come to the second")


def main():
    program, stuck_disk, sample = (os.path.abspath(path) for path in sys.argv[1:])
    for tool in ("Xvfb", "openbox", "xdotool", "dbus-daemon", "dbus-send"):
        if not shutil.which(tool):
            print(f"skipped: {tool} is not installed")
            return 77
    names = {adding_from_a_stuck_disk: "stuck from the first.pdf", preview_that_takes_without_end: "endless.pdf"}
    for case in (adding_from_a_stuck_disk, preview_on_a_stuck_disk, preview_that_takes_without_end, production_on_a_stuck_disk):
        with tempfile.TemporaryDirectory() as work:
            home = os.path.join(work, "home")
            os.makedirs(home, mode=0o700)
            source = os.path.join(work, names.get(case, "stuck.pdf"))
            if case is preview_that_takes_without_end:
                endless_page(source)
            else:
                shutil.copy(sample, source)
            session = Session(program, home, source, LD_PRELOAD=stuck_disk)
            try:
                case(session, work)
            except Failed as failure:
                print(f"{case.__name__.replace('_', ' ')}: {failure}")
                return 1
            finally:
                session.close()
    print("nothing was waited for but a production's page")
    return 0


if __name__ == "__main__":
    sys.exit(main())
