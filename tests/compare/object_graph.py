"""The objects of a file and the references between them, as qpdf lists them."""
import json
import re

from limited import run

REFERENCE = re.compile(r"(\d+) (\d+) R\Z")
# A number as a PDF file may have it and JSON may not: qpdf hands on +1.0, .5 and 4. as they are.
NUMBER = re.compile(rb"(?m)(^\s*|\": )[+-]?[0-9.]+(,?)$")
# What carries other objects is reached by the table of the file alone.
CARRIERS = ("/ObjStm", "/XRef")


def _references(value):
    """The objects that `value` refers to, as "number generation R"."""
    pending = [value]
    while pending:
        value = pending.pop()
        if isinstance(value, dict):
            pending += value.values()
        elif isinstance(value, list):
            pending += value
        elif isinstance(value, str) and REFERENCE.match(value):
            yield value


def findings_in(path):
    """References of the file at `path` that lead nowhere, and objects that nothing leads to."""
    ended = run(["qpdf", "--json=2", "--json-key=qpdf", "--json-stream-data=none", path])
    try:
        listed = json.loads(NUMBER.sub(rb"\g<1>0\2", ended.output))["qpdf"][1]
    except (ValueError, KeyError, IndexError):
        return ["the objects of the copy cannot be listed"]
    objects = {name[len("obj:"):]: value for name, value in listed.items() if name.startswith("obj:")}
    reached = set()
    pending = list(_references(listed["trailer"]))
    while pending:
        reference = pending.pop()
        if reference not in reached:
            reached.add(reference)
            pending += _references(objects.get(reference))
    findings = []
    for name, value in objects.items():
        kind = value.get("stream", {}).get("dict", {}).get("/Type")
        # qpdf lists an object that is only referred to as null, and leaves the entry out that does so.
        if value.get("value", "") is None:
            findings.append(f"a reference to {name}, which is nothing")
        elif name not in reached and kind not in CARRIERS:
            findings.append(f"nothing leads to {name}")
    return findings
