"""Which lines differ from a base that git knows."""
import re
import subprocess

HUNK = re.compile(r"^@@ -\S+ \+(\d+)(?:,(\d+))? @@")


def changed_lines(root, base):
    """By file, the numbers of lines that are new or other than in `base`; None where there is no such base."""
    result = subprocess.run(["git", "diff", "-U0", "--no-color", "--no-ext-diff", "--src-prefix=a/", "--dst-prefix=b/", base, "--"],
                            cwd=root, capture_output=True, text=True, errors="replace")
    if result.returncode != 0:
        return None
    lines = {}
    file = None
    for line in result.stdout.splitlines():
        if line.startswith("+++ "):
            file = line[len("+++ b/"):] if line != "+++ /dev/null" else None
        elif file and (match := HUNK.match(line)):
            first, count = int(match.group(1)), int(match.group(2) or 1)
            lines.setdefault(file, set()).update(range(first, first + count))
    return lines
