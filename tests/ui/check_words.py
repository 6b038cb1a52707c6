#!/usr/bin/python3
"""Holds the English catalogue to its task: it says what this desktop calls things of another one, in every text that
names such a thing, and changes no other.

Usage: check_words.py UI_FOLDER CATALOGUE.ts
"""
import html
import os
import re
import sys

# A preview is a thing of ours; Preview is another desktop's program.
FOREIGN = re.compile(r"Finder|in Preview\b|Preview asks|macOS|this Mac|⌘|Dock\b")
KEY = re.compile(r'QT_TRANSLATE_NOOP\(\s*"Words",\s*((?:"(?:[^"\\]|\\.)*"\s*)+)\)')
MESSAGE = re.compile(r"<message>\s*<source>(.*?)</source>\s*<translation>(.*?)</translation>", re.S)


def keys_in(folder):
    keys = set()
    for place, _, names in os.walk(folder):
        for name in names:
            if name.endswith((".cpp", ".h")):
                with open(os.path.join(place, name), encoding="utf-8") as file:
                    for match in KEY.finditer(file.read()):
                        keys.add("".join(re.findall(r'"((?:[^"\\]|\\.)*)"', match.group(1))))
    return keys


def faults_of(keys, catalogue):
    faults = [f"names a thing of another desktop: {key}" for key in sorted(keys)
              if FOREIGN.search(key) and key not in catalogue]
    for key, text in sorted(catalogue.items()):
        if key not in keys:
            faults.append(f"is no text of the program: {key}")
        elif not FOREIGN.search(key):
            faults.append(f"has no need of another wording: {key}")
        if FOREIGN.search(text):
            faults.append(f"still names a thing of another desktop: {text}")
        if sorted(re.findall(r"%\d", key)) != sorted(re.findall(r"%\d", text)):
            faults.append(f"has other placeholders: {key}")
    return faults


def main():
    folder, path = sys.argv[1:]
    keys = keys_in(folder)
    with open(path, encoding="utf-8") as file:
        words = re.search(r"<name>Words</name>(.*?)</context>", file.read(), re.S).group(1)
    catalogue = {html.unescape(source): html.unescape(text) for source, text in MESSAGE.findall(words)}
    faults = faults_of(keys, catalogue)
    # A check that cannot see a fault is none.
    if not faults_of({"Show in Finder"}, {}) or not faults_of({"Show"}, {"Show": "See"}):
        faults.append("this check finds nothing")
    print("\n".join(faults + [f"{len(keys)} texts, {len(catalogue)} in other words, {len(faults)} faults"]))
    return 1 if faults or not keys else 0


if __name__ == "__main__":
    sys.exit(main())
