#!/usr/bin/python3
"""A file system in memory that can do as little as it is told, served to the kernel over /dev/fuse.

Usage: made_file_system.py KIND FOLDER

Mounts itself on FOLDER, which takes root (of a user namespace at least), prints "ready", and serves until it is
unmounted. It is there for tests: programs meet what they would meet on disks that the machine's kernel does not know.
"""
import ctypes
import errno
import os
import stat
import struct
import sys
import time
import unicodedata
from dataclasses import dataclass, field

ROOT = 1
BLOCK = 512
FATTR_MODE, FATTR_SIZE = 1, 8
# The operations of the kernel's protocol (linux/fuse.h) that are answered, or that want no answer.
LOOKUP, FORGET, GETATTR, SETATTR, READLINK, SYMLINK, MKDIR, UNLINK, RMDIR, RENAME, LINK, OPEN, READ, WRITE, STATFS, \
    RELEASE, FSYNC, FLUSH, INIT, OPENDIR, READDIR, RELEASEDIR, FSYNCDIR, CREATE, INTERRUPT, DESTROY, BATCH_FORGET, \
    RENAME2 = (1, 2, 3, 4, 5, 6, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 20, 25, 26, 27, 28, 29, 30, 35, 36, 38, 42, 45)


@dataclass
class Kind:
    """What a file system can do."""
    renames_without_replacing: bool = False  # RENAME_NOREPLACE
    has_links: bool = False
    folds: bool = False  # Letter case and forms of Unicode do not tell names apart.
    forbidden: bytes = b""  # Bytes that no name may have, besides those that are no UTF-8.
    name_limit: int = 255
    tells_full_disk_late: bool = False  # Only when the bytes are flushed.
    flushes_folders: bool = True
    capacity: int = 4 << 20


KINDS = {
    "fat": Kind(folds=True, forbidden=b'"*:<>?\\|' + bytes(range(32))),
    "network": Kind(has_links=True, name_limit=143, tells_full_disk_late=True, flushes_folders=False),
    "folding": Kind(renames_without_replacing=True, has_links=True, folds=True),
}


@dataclass
class Node:
    """A file, a folder or a symbolic link."""
    mode: int
    data: bytearray = field(default_factory=bytearray)
    names: dict = field(default_factory=dict)  # In a folder: what a name is known by, and the name and the node.
    links: int = 1
    changed: float = field(default_factory=time.time)


class Refusal(Exception):
    """An error number for an answer."""


class MadeFileSystem:
    """The files, and what they do when asked. Every operation takes the node's number and the rest of the message, and
    gives the rest of the answer."""

    def __init__(self, kind):
        self.kind = kind
        self.nodes = {ROOT: Node(stat.S_IFDIR | 0o777)}
        self.next_number = ROOT + 1
        self.answers = {
            LOOKUP: self.lookup, GETATTR: self.getattr, SETATTR: self.setattr, READLINK: self.readlink,
            SYMLINK: self.symlink, MKDIR: self.mkdir, UNLINK: self.unlink, RMDIR: self.unlink, RENAME: self.rename,
            RENAME2: self.rename2, LINK: self.link, OPEN: self.open, READ: self.read, WRITE: self.write,
            STATFS: self.statfs, RELEASE: self.nothing, FSYNC: self.flush, FLUSH: self.nothing, INIT: self.init,
            OPENDIR: self.open, READDIR: self.readdir, RELEASEDIR: self.nothing, FSYNCDIR: self.fsyncdir,
            CREATE: self.create, DESTROY: self.nothing}

    def answer(self, operation, number, body):
        """The error number, 0 for none, and the rest of the answer."""
        try:
            if operation not in self.answers:
                return errno.ENOSYS, b""
            return 0, self.answers[operation](number, body)
        except Refusal as refusal:
            return refusal.args[0], b""

    # Names

    def key(self, name):
        """What tells `name` apart in its folder."""
        if not self.kind.folds:
            return name
        return unicodedata.normalize("NFC", name.decode("utf-8", "surrogateescape").casefold())

    def checked(self, name):
        if len(name) > self.kind.name_limit:
            raise Refusal(errno.ENAMETOOLONG)
        if self.kind.forbidden:
            try:
                name.decode()
            except UnicodeDecodeError:
                raise Refusal(errno.EINVAL) from None
            if any(byte in self.kind.forbidden for byte in name) or name.endswith((b".", b" ")):
                raise Refusal(errno.EINVAL)
        return name

    def found(self, folder, name):
        entry = self.nodes[folder].names.get(self.key(name))
        if entry is None:
            raise Refusal(errno.ENOENT)
        return entry[1]

    def put(self, folder, name, number, may_replace=False):
        names = self.nodes[folder].names
        if self.key(self.checked(name)) in names and not may_replace:
            raise Refusal(errno.EEXIST)
        names[self.key(name)] = (name, number)

    # Answers

    def attributes(self, number):
        node = self.nodes[number]
        seconds = int(node.changed)
        nanoseconds = int((node.changed - seconds) * 1e9)
        return struct.pack("<6Q10I", number, len(node.data), -(-len(node.data) // BLOCK), seconds, seconds, seconds,
                           nanoseconds, nanoseconds, nanoseconds, node.mode, node.links, os.getuid(), os.getgid(), 0,
                           BLOCK, 0)

    def entry(self, number):
        return struct.pack("<4Q2I", number, 0, 0, 0, 0, 0) + self.attributes(number)

    def add(self, folder, name, node):
        self.put(folder, name, self.next_number)
        self.nodes[self.next_number] = node
        self.next_number += 1
        return self.entry(self.next_number - 1)

    def free(self):
        return self.kind.capacity - sum(-(-len(node.data) // BLOCK) * BLOCK for node in self.nodes.values() if node.links)

    def nothing(self, *_):
        return b""

    def init(self, _, body):
        major, minor, read_ahead, _ = struct.unpack_from("<4I", body)
        most = 128 << 10
        return struct.pack("<4I2H2I2H8I", major, min(minor, 31), read_ahead, 0, 0, 0, most, 1, 0, 0, *[0] * 8)

    def lookup(self, folder, body):
        return self.entry(self.found(folder, body.rstrip(b"\0")))

    def getattr(self, number, _):
        return struct.pack("<Q2I", 0, 0, 0) + self.attributes(number)

    def setattr(self, number, body):
        valid, _, _, size = struct.unpack_from("<2I2Q", body)
        node = self.nodes[number]
        if valid & FATTR_SIZE:
            node.data = node.data[:size].ljust(size, b"\0")
        if valid & FATTR_MODE:
            node.mode = stat.S_IFMT(node.mode) | stat.S_IMODE(struct.unpack_from("<I", body, 68)[0])
        return self.getattr(number, body)

    def readlink(self, number, _):
        return bytes(self.nodes[number].data)

    def symlink(self, folder, body):
        if not self.kind.has_links:
            raise Refusal(errno.EPERM)
        name, target, _ = body.split(b"\0")
        return self.add(folder, name, Node(stat.S_IFLNK | 0o777, bytearray(target)))

    def mkdir(self, folder, body):
        mode, umask = struct.unpack_from("<2I", body)
        return self.add(folder, body[8:].rstrip(b"\0"), Node(stat.S_IFDIR | mode & ~umask))

    def create(self, folder, body):
        _, mode, umask = struct.unpack_from("<3I", body)
        made = self.add(folder, body[16:].rstrip(b"\0"), Node(stat.S_IFREG | stat.S_IMODE(mode) & ~umask))
        return made + self.open()

    def unlink(self, folder, body):
        name = body.rstrip(b"\0")
        node = self.nodes[self.found(folder, name)]
        if node.names:
            raise Refusal(errno.ENOTEMPTY)
        node.links -= 1
        del self.nodes[folder].names[self.key(name)]
        return b""

    def move(self, folder, to_folder, names, may_replace):
        name, to_name, _ = names.split(b"\0")
        number = self.found(folder, name)
        self.put(to_folder, to_name, number, may_replace)
        del self.nodes[folder].names[self.key(name)]
        return b""

    def rename(self, folder, body):
        return self.move(folder, struct.unpack_from("<Q", body)[0], body[8:], may_replace=True)

    def rename2(self, folder, body):
        if not self.kind.renames_without_replacing:
            raise Refusal(errno.EINVAL)
        return self.move(folder, struct.unpack_from("<Q", body)[0], body[16:], may_replace=False)

    def link(self, folder, body):
        if not self.kind.has_links:
            raise Refusal(errno.EPERM)
        number = struct.unpack_from("<Q", body)[0]
        self.put(folder, body[8:].rstrip(b"\0"), number)
        self.nodes[number].links += 1
        return self.entry(number)

    def open(self, *_):
        return struct.pack("<Q2I", 0, 0, 0)

    def read(self, number, body):
        _, offset, size = struct.unpack_from("<2QI", body)
        return bytes(self.nodes[number].data[offset:offset + size])

    def write(self, number, body):
        _, offset, size = struct.unpack_from("<2QI", body)
        data = self.nodes[number].data
        growth = max(0, offset + size - len(data))
        if growth > self.free() and not self.kind.tells_full_disk_late:
            raise Refusal(errno.ENOSPC)
        data.extend(bytes(growth))
        data[offset:offset + size] = body[40:]
        return struct.pack("<2I", size, 0)

    def flush(self, *_):
        if self.free() < 0:
            raise Refusal(errno.ENOSPC)
        return b""

    def fsyncdir(self, *_):
        if not self.kind.flushes_folders:
            raise Refusal(errno.EINVAL)
        return b""

    def statfs(self, *_):
        free = max(0, self.free()) // BLOCK
        return struct.pack("<5Q4I6I", self.kind.capacity // BLOCK, free, free, 1 << 20, 1 << 20, BLOCK,
                           self.kind.name_limit, BLOCK, 0, *[0] * 6)

    def readdir(self, folder, body):
        _, offset, size = struct.unpack_from("<2QI", body)
        listing = b""
        for place, (name, number) in list(enumerate(self.nodes[folder].names.values(), 1))[offset:]:
            entry = struct.pack("<2Q2I", number, place, len(name), self.nodes[number].mode >> 12) + name
            entry += bytes(-len(entry) % 8)
            if len(listing) + len(entry) > size:
                break
            listing += entry
        return listing


def mount(folder):
    """Mounts a file system on `folder`; the descriptor over which the kernel asks for it."""
    kernel = os.open("/dev/fuse", os.O_RDWR)
    options = f"fd={kernel},rootmode=40000,user_id={os.getuid()},group_id={os.getgid()},default_permissions,allow_other"
    libc = ctypes.CDLL(None, use_errno=True)
    if libc.mount(b"made", os.fsencode(folder), b"fuse", 0, options.encode()) != 0:
        raise OSError(ctypes.get_errno(), os.strerror(ctypes.get_errno()))
    return kernel


def serve(kernel, files):
    while True:
        try:
            message = os.read(kernel, 1 << 20)
        except OSError as error:
            if error.errno == errno.ENODEV:  # Unmounted.
                return
            if error.errno in (errno.EINTR, errno.ENOENT, errno.EAGAIN):
                continue
            raise
        _, operation, unique, number = struct.unpack_from("<2I2Q", message)
        if operation in (FORGET, BATCH_FORGET, INTERRUPT):
            continue
        error, body = files.answer(operation, number, message[40:])
        os.write(kernel, struct.pack("<IiQ", 16 + len(body), -error, unique) + body)


def main():
    kind, folder = sys.argv[1:]
    try:
        kernel = mount(folder)
    except OSError as error:
        print(error.strerror, flush=True)
        return 1
    print("ready", flush=True)
    serve(kernel, MadeFileSystem(KINDS[kind]))
    return 0


if __name__ == "__main__":
    sys.exit(main())
