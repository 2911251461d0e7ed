"""Keeps a process from harming the machine: a mutant may rename, truncate or remove any file that it can reach.

In a namespace of its own it finds every file system read-only, an empty folder for temporary files, and devices that are
its own. Where the system grants no such namespace nothing is run at all.
"""
import ctypes
import os
import stat
import subprocess

CLONE_NEWNS, CLONE_NEWUSER = 0x20000, 0x10000000
MS_NOSUID, MS_NODEV, MS_BIND, MS_REC, MS_PRIVATE = 2, 4, 0x1000, 0x4000, 0x40000
SYS_MOUNT_SETATTR, AT_FDCWD, AT_RECURSIVE, MOUNT_ATTR_RDONLY = 442, -100, 0x8000, 1
DEVICES = {"null": (1, 3), "zero": (1, 5), "full": (1, 7), "urandom": (1, 9)}

LIBRARY = ctypes.CDLL(None, use_errno=True)


class Attributes(ctypes.Structure):
    _fields_ = [(name, ctypes.c_uint64) for name in ("set", "clear", "propagation", "namespace")]


def checked(result, what):
    if result != 0:
        raise OSError(ctypes.get_errno(), f"{what}: {os.strerror(ctypes.get_errno())}")


def mount(source, target, kind, flags):
    names = [name.encode() if name else None for name in (source, target, kind)]
    checked(LIBRARY.mount(*names, ctypes.c_ulong(flags), None), f"mount {target}")


def contain(folder):
    """For the process that calls it, and those it starts, which still find `folder`. Raises OSError when it is not
    granted."""
    is_root = os.geteuid() == 0
    user, group = os.geteuid(), os.getegid()
    checked(LIBRARY.unshare(CLONE_NEWNS | (0 if is_root else CLONE_NEWUSER)), "unshare")
    if not is_root:
        for name, text in (("setgroups", "deny"), ("uid_map", f"{user} {user} 1"), ("gid_map", f"{group} {group} 1")):
            with open(f"/proc/self/{name}", "w", encoding="ascii") as file:
                file.write(text)
    # Nothing of what follows is seen outside.
    mount(None, "/", None, MS_REC | MS_PRIVATE)
    attributes = Attributes(set=MOUNT_ATTR_RDONLY)
    checked(LIBRARY.syscall(SYS_MOUNT_SETATTR, AT_FDCWD, b"/", AT_RECURSIVE, ctypes.byref(attributes),
                            ctypes.sizeof(attributes)), "mount_setattr")
    inside = os.open(folder, os.O_PATH)
    mount("tmpfs", "/tmp", "tmpfs", MS_NOSUID | MS_NODEV)
    if not os.path.exists(folder):  # it is under /tmp itself
        os.makedirs(folder)
        mount(f"/proc/self/fd/{inside}", folder, None, MS_BIND)
    os.close(inside)
    # Writable, as they are for root: what is tried on them is to be seen, on these and not on the machine's.
    outside = {name: os.open(f"/dev/{name}", os.O_PATH) for name in DEVICES}
    mount("tmpfs", "/dev", "tmpfs", MS_NOSUID)
    for name, numbers in DEVICES.items():
        if is_root:
            os.mknod(f"/dev/{name}", stat.S_IFCHR | 0o666, os.makedev(*numbers))
            os.chmod(f"/dev/{name}", 0o666)
        else:
            os.close(os.open(f"/dev/{name}", os.O_CREAT, 0o666))
            mount(f"/proc/self/fd/{outside[name]}", f"/dev/{name}", None, MS_BIND)
        os.close(outside[name])
    os.symlink("/proc/self/fd", "/dev/fd")
    for number, name in enumerate(("stdin", "stdout", "stderr")):
        os.symlink(f"/proc/self/fd/{number}", f"/dev/{name}")
    os.mkdir("/dev/shm", 0o1777)


def is_granted(folder):
    """Whether the system lets a process be contained. A container of its own may forbid it."""
    try:
        return subprocess.run(["true"], preexec_fn=lambda: contain(folder), check=False).returncode == 0
    except subprocess.SubprocessError:
        return False
