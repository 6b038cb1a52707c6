"""The document that tells how copies look in each viewer."""
import re

INTRODUCTION = """# Fidelity

How copies look in the viewers that people open them with. Every file of a collection of public test files, many of them damaged
or strange on purpose, and of samples made for this is stamped on its own; each viewer draws every page of the original and
of the copy, finds the number, and says what it finds wrong. A page is equal when it differs nowhere but in the white box with the
number; only pages count whose original the viewer draws. `scripts/compare --viewers --write docs/fidelity.md [FOLDER]` makes this
table; the program's tests do the same with Poppler and mupdf alone.
"""
NAMES = ("pdf.js", "mupdf")  # Their names begin with a small letter.


def cell(count, explained):
    """A count of what is as it should be, and how much is not, by whether it has a cause."""
    return f"{count} | {explained[True]} | {explained[False]}"


def pages_text(pages):
    numbers = sorted({page for page in pages if page})
    if not numbers:
        return ""
    runs = []
    for number in numbers:
        if runs and runs[-1][1] == number - 1:
            runs[-1][1] = number
        else:
            runs.append([number, number])
    return " p. " + ", ".join(str(first) if first == last else f"{first}–{last}" for first, last in runs)


def causes_text(reports):
    """Each cause, and below it where: by file, viewer and page."""
    by_cause = {}
    for report, explained in reports:
        for finding, cause in explained:
            places = by_cause.setdefault(cause or "Not explained", {})
            places.setdefault((report.file, finding.tool), []).append(finding.page)
    lines = []
    for cause in sorted(by_cause, key=str.lower):
        lines.append(f"- {cause if cause.startswith(NAMES) else cause[0].upper() + cause[1:]}:")
        by_file = {}
        for (file, tool), pages in by_cause[cause].items():
            by_file.setdefault(file, []).append(f"{tool}{pages_text(pages)}")
        lines += [f"  - `{file}`: {'; '.join(places)}" for file, places in by_file.items()]
    return "\n".join(lines)


def document(viewers, reports):
    """The whole document, of pairs of a file's report and its findings with their causes."""
    rows = ["| viewer | files | pages | equal | explained | not explained | numbers found | explained | not explained | "
            "new warnings: explained | not explained |", "| --- |" + " ---: |" * 10]
    for viewer in viewers:
        tallies = [report.tallies[viewer.name] for report, _ in reports if viewer.name in report.tallies]
        counts = {kind: {True: 0, False: 0} for kind in ("", " text", " warnings")}
        for _, explained in reports:
            for finding, cause in explained:
                for kind, count in counts.items():
                    if finding.tool == viewer.name + kind:
                        count[cause is not None] += 1
        rows.append(f"| {viewer.version()} | {sum(tally.files for tally in tallies)} | "
                    f"{sum(tally.pages for tally in tallies)} | {cell(sum(tally.equal for tally in tallies), counts[''])} | "
                    f"{cell(sum(tally.found for tally in tallies), counts[' text'])} | {counts[' warnings'][True]} | "
                    f"{counts[' warnings'][False]} |")
    refused = sum(report.problem != "-" for report, _ in reports)
    parts = [INTRODUCTION, "\n".join(rows) + "\n",
             f"{refused} further files have no copy: they are locked, restricted, unreadable or empty, and say so.\n"]
    if any(explained for _, explained in reports):
        parts.append("## Differences and their causes\n\n" + causes_text(reports) + "\n")
    return re.sub(r"\n{3,}", "\n\n", "\n".join(parts))
