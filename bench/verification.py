"""Whether a written file is what it should be, as qpdf reads it."""

import base64
import hashlib
import json
import os
import re
import subprocess
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path


def syntax_fault(path):
    """What `qpdf --check` has to say against a file; nothing when it is right."""
    done = subprocess.run(["qpdf", "--check", path], capture_output=True, text=True)
    return "" if done.returncode == 0 else f"qpdf --check of {path.name}: {done.stderr.strip()[:400]}"


def written_faults(operation, source, foreign, paths):
    """What is wrong with the files that an operation made of `source`: no list element for a right one."""
    is_right = equality(operation, source, foreign)

    def fault(path):
        words = f"{operation} {source.name}: {path.name} doesn't read back equal"
        return syntax_fault(path) or ("" if is_right(path) else words)
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        return [found for found in pool.map(fault, paths) if found]


def equality(operation, source, foreign):
    """What tells whether a written file has the values that it should have."""
    if operation == "background":
        expected = PageTree(source).with_background(PageTree(foreign))
        return readable(lambda path: expected == PageTree(path).parts())
    if operation == "place":
        tree, letter = PageTree(source), PageTree(foreign).drawings()[0]
        return readable(lambda path: is_placed(tree, letter, PageTree(path)))
    text = canonical(source)
    if operation == "form":
        return readable(lambda path: is_filled(text, canonical(path)))
    if operation == "form-drawn":
        return readable(lambda path: has_values(canonical(path)))
    return readable(lambda path: canonical(path) == text and has_filters(operation, source, path))


def readable(is_right):
    """The same, but false for a file that can't be read whole: `qpdf --check` leaves most streams undecoded."""
    def answer(path):
        try:
            return is_right(path)
        except (subprocess.CalledProcessError, KeyError):
            return False
    return answer


def canonical(path):
    """The document in a form that doesn't depend on ids, offsets and compression, up to the table."""
    with tempfile.NamedTemporaryFile(dir=path.parent, suffix=".qdf") as out:
        subprocess.run(["qpdf", "--qdf", "--static-id", "--normalize-content=n", "--no-original-object-ids", path,
                        out.name], check=True)
        text = Path(out.name).read_bytes()
    return text[:text.rindex(b"\nxref\n")]


def has_filters(operation, source, path):
    """Whether the streams are stored as they should be."""
    before, after = (file.read_bytes().count(b"/FlateDecode") for file in (source, path))
    streams = source.read_bytes().count(b"\nstream\n")
    if operation == "rewrite":
        return after == before
    if operation == "uncompress":
        return after == 0
    is_smaller = operation != "recompress" or stored_bytes(path) < stored_bytes(source)
    return 0 < streams - 1 <= after and is_smaller


def stored_bytes(path):
    """Of all streams together, whose dictionaries have the lengths themselves."""
    return sum(map(int, re.findall(rb"/Length (\d+)", path.read_bytes())))


VALUE = re.compile(rb"\n  /V \((.*)\)(?=\n)")


def has_values(written):
    """Whether all fields have their value, and all or none a look."""
    names = re.findall(rb"\n  /T \(field-(.*)\)\n", written)
    looks = written.count(b"\n  /AP <<\n")
    return (VALUE.findall(written) == [b"Value of field " + name for name in names] and len(names) > 0
            and looks in (0, len(names)))


def is_filled(source, written):
    """Whether all fields have their value and nothing else is changed."""
    return (has_values(written) and len(VALUE.findall(written)) == len(VALUE.findall(source))
            and VALUE.sub(b"", source) == VALUE.sub(b"", written))


def is_placed(source, letter, written):
    """Whether each page draws the letterhead and then what it drew before, and nothing else is changed."""
    drawings = written.drawings()
    return (source.catalog == written.catalog and source.others() == written.others()
            and len(drawings) == len(source.pages)
            and all(-1 < drawing.find(letter) < drawing.rfind(own)
                    for drawing, own in zip(drawings, source.drawings())))


def contents(page):
    return page["/Contents"] if isinstance(page["/Contents"], list) else [page["/Contents"]]


def with_resources(node, foreign):
    """A page, or the root of a page tree, with the resources of a foreign one added."""
    if "/Resources" not in foreign:
        return node
    resources = dict(node.get("/Resources", {}))
    for category, names in foreign["/Resources"].items():
        resources[category] = {**resources.get(category, {}), **names}
    return {**node, "/Resources": resources}


class PageTree:
    """The catalog, the root of the page tree and its pages, with what they refer to in place of the references."""

    def __init__(self, path):
        done = subprocess.run(["qpdf", "--json=2", "--json-key=qpdf", "--json-stream-data=inline",
                               "--decode-level=generalized", path], stdout=subprocess.PIPE, check=True)
        self.objects = json.loads(done.stdout)["qpdf"][1]
        self.expanded = {}
        self.marks = {}
        catalog = dict(self.value(self.objects["trailer"]["value"]["/Root"]))
        root = catalog.pop("/Pages")
        kids = self.value(root)["/Kids"]
        self.catalog = self.expand(catalog)
        self.root = self.expand(root)
        # Whether each page refers back to the root stands for the reference, which `expand` leaves out.
        self.pages = [{**self.expand(kid), "/Parent": self.value(kid).get("/Parent") == root} for kid in kids]

    def value(self, reference):
        return self.objects["obj:" + reference]["value"]

    def parts(self):
        return self.catalog, self.root, [{**page, "/Contents": contents(page)} for page in self.pages]

    def with_background(self, foreign):
        """The parts that it should have with contents and resources of the foreign page added to each page."""
        letter = foreign.pages[0]
        return self.catalog, with_resources(self.root, foreign.root), [
            with_resources({**page, "/Contents": contents(letter) + contents(page)}, letter) for page in self.pages]

    def others(self):
        """All of the root and the pages but what they draw and with what."""
        nodes = [self.root, *self.pages]
        return [{key: value for key, value in node.items() if key not in ("/Contents", "/Resources")}
                for node in nodes]

    def drawings(self):
        """The content of each page, with what they stand for in place of the names of resources."""
        return [self.drawing(contents(page), page.get("/Resources", self.root.get("/Resources", {})))
                for page in self.pages]

    def drawing(self, streams, resources):
        named = {name: value for names in resources.values() if isinstance(names, dict)
                 for name, value in names.items()}

        def meaning(match):
            if match[1] not in named:
                return match[0]
            value = named[match[1]]
            if match[2] and value["dict"]["/Subtype"] == "/Form":
                return self.drawing([value], value["dict"].get("/Resources", {}))
            return self.mark(value) + (match[2] or "")
        text = " ".join(base64.b64decode(stream["data"]).decode("latin-1") for stream in streams)
        return re.sub(r"(/\w+)( Do\b)?", meaning, " ".join(text.split()))

    def mark(self, value):
        """A short text that stands for the value, however large that is."""
        if id(value) not in self.marks:
            self.marks[id(value)] = hashlib.sha256(json.dumps(value, sort_keys=True).encode()).hexdigest()
        return self.marks[id(value)]

    def expand(self, value):
        if isinstance(value, str) and re.fullmatch(r"\d+ 0 R", value):
            if value not in self.expanded:
                found = self.objects["obj:" + value]
                self.expanded[value] = self.expand(found["value"] if "value" in found else found["stream"])
            return self.expanded[value]
        if isinstance(value, list):
            return [self.expand(element) for element in value]
        if isinstance(value, dict):
            # Parents and kids would lead around, and the length is that of the stored data.
            return {key: self.expand(inner) for key, inner in value.items()
                    if key not in ("/Parent", "/Kids", "/Length")}
        return value
