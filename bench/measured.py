"""Runs a command and writes its wall time in seconds and its peak resident memory in KB to the file named first.

Started by itself and kept small: the peak that the system tells of a program is never below that of the program which
started it.
"""
import os
import sys
import time

report, *command = sys.argv[1:]
start = time.monotonic()
child = os.fork()
if child == 0:
    try:
        os.execvp(command[0], command)
    finally:
        os._exit(127)
_, status, usage = os.wait4(child, 0)
seconds = time.monotonic() - start
with open(report, "w") as file:
    file.write(f"{os.waitstatus_to_exitcode(status)} {seconds} {usage.ru_maxrss}")
