"""Small file systems of many kinds, mounted where only this process and its children see them.

`enter` starts the program anew where it may mount, if the machine lets it; `all_of` then makes the file systems. They go
with the process, however it ends.
"""
import contextlib
import os
import subprocess
import sys
from dataclasses import dataclass

HERE = os.path.dirname(os.path.abspath(__file__))
INSIDE = "TALLYFOLD_MAY_MOUNT"
MEGABYTES = 8


class NotPossible(Exception):
    """Why a file system cannot be made here."""


@dataclass
class FileSystem:
    """One that was made, or that was there."""
    name: str
    folder: str
    is_real: bool = True
    is_small: bool = True  # It may be filled up, and made read-only.
    folds: bool = False  # It does not tell letter case apart. Found out by trying.
    names: str = ""  # How many of the names that were tried it can hold.


def enter():
    """Starts this program anew as root of its own mounts and processes, which all end with it. Does nothing where that is
    not possible, and in the program that was started."""
    if INSIDE in os.environ:
        return
    alone = ["unshare", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc", "--propagation", "private"]
    for command in (alone, [*alone, "--map-root-user"]):
        with contextlib.suppress(OSError):
            if subprocess.run([*command, "true"], stderr=subprocess.DEVNULL, check=False).returncode == 0:
                os.environ[INSIDE] = "1"
                os.execvp(command[0], [*command, sys.executable, "-B", *sys.argv])


def tool(*command):
    """Runs a tool of the system, and says what it says where it fails."""
    try:
        ended = subprocess.run(command, capture_output=True, text=True, check=False)
    except FileNotFoundError:
        raise NotPossible(f"there is no {command[0]} here") from None
    if ended.returncode != 0:
        said = [line for line in ended.stderr.splitlines() if "dmesg" not in line]
        raise NotPossible(said[-1].strip().removeprefix(f"mount: {command[-1]}: ") if said else f"{command[0]} fails")
    return ended.stdout.strip()


def image(folder, *make):
    path = folder + ".image"
    with open(path, "wb") as file:
        file.truncate(MEGABYTES << 20)
    tool(*make, path)
    return path


def tmpfs(folder):
    tool("mount", "-t", "tmpfs", "-o", f"size={MEGABYTES}m,mode=755", "tmpfs", folder)


def ext4(folder):
    tool("mount", "-t", "ext4", "-o", "loop", image(folder, "mkfs.ext4", "-q", "-m", "0"), folder)


def folding_ext4(folder):
    tool("mount", "-t", "ext4", "-o", "loop",
         image(folder, "mkfs.ext4", "-q", "-m", "0", "-O", "casefold", "-E", "encoding=utf8"), folder)
    tool("chattr", "+F", folder)  # What is made in it inherits this.


def vfat(folder):
    tool("mount", "-t", "vfat", "-o", "loop,utf8", image(folder, "mkfs.vfat"), folder)


def exfat(folder):
    tool("mount", "-t", "exfat", "-o", "loop", image(folder, "mkfs.exfat"), folder)


def exfat_by_fuse(folder):
    device = tool("losetup", "--find", "--show", image(folder, "mkfs.exfat"))
    try:
        tool("mount.exfat-fuse", device, folder)
    finally:
        tool("losetup", "--detach", device)  # Takes effect with the unmounting.


def overlay(folder):
    layers = folder + ".layers"
    os.mkdir(layers)
    tmpfs(layers)
    for layer in ("lower", "upper", "work"):
        os.mkdir(os.path.join(layers, layer))
    tool("mount", "-t", "overlay", "-o",
         f"lowerdir={layers}/lower,upperdir={layers}/upper,workdir={layers}/work", "overlay", folder)


def made(kind, folder):
    server = subprocess.Popen([sys.executable, "-B", os.path.join(HERE, "made_file_system.py"), kind, folder],
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    said = server.stdout.readline().strip()
    if said != "ready":
        raise NotPossible(said)


REAL = {"tmpfs": tmpfs, "ext4": ext4, "ext4 that folds letter case": folding_ext4, "vfat": vfat, "exFAT": exfat,
        "exFAT by FUSE": exfat_by_fuse, "overlayfs": overlay}
SIMULATED = {"FAT": "fat", "a network's": "network", "one that folds letter case": "folding"}


def made_below(folder):
    """The file systems that can be made in `folder`, and why the others cannot, by their names."""
    found = []
    failed = {}
    for place, name in enumerate([*REAL, *SIMULATED]):
        path = os.path.join(folder, str(place))
        os.mkdir(path)
        try:
            if INSIDE not in os.environ:
                raise NotPossible("nothing may be mounted here")
            if name in REAL:
                REAL[name](path)
            else:
                made(SIMULATED[name], path)
            found.append(FileSystem(name, path, is_real=name in REAL))
        except NotPossible as reason:
            failed[name] = str(reason)
    return found, failed


@contextlib.contextmanager
def all_of(folder):
    """Those of `made_below`, after the one that `folder` is on."""
    own = FileSystem("this machine's " + tool("stat", "-f", "-c", "%T", folder), os.path.join(folder, "own"),
                     is_small=False)
    os.mkdir(own.folder)
    found, failed = made_below(folder)
    try:
        yield [own, *found], failed
    finally:
        for file_system in reversed(found):
            subprocess.run(["umount", "--lazy", file_system.folder], check=False)
        subprocess.run(["umount", "--lazy", *[f"{one.folder}.layers" for one in found if one.name == "overlayfs"]],
                       stderr=subprocess.DEVNULL, check=False)
