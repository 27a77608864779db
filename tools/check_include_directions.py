#!/usr/bin/env python3
"""Fails on an #include that runs against the direction between families.

The library's sources live in one folder per family under
src/vel_qt_widgets/, and a family may include only itself and what it
builds on:

    common <- sliders
    common <- filter <- grid
    common <- buttons
    common <- layout

Nothing depends on grid. The Designer plug-in (src/designer), the tests and
the examples may include anything and are not checked.

Every #include in src/vel_qt_widgets/** and include/vel_qt_widgets/*.h is
mapped to a family: a private header by its file name to the folder that
holds it; a public header to the family of its class (the folder holding
the class's file pair), with the few that hold no class of their own listed
in PUBLIC_HEADER_FAMILIES. CMwGridRoles.h and the generated export header
count as common. Includes of anything else (Qt, the standard library,
vel_system, generated moc files) are not the library's and are skipped.

Usage:
    check_include_directions.py [SOURCE_ROOT]   check the tree (default: ..)
    check_include_directions.py --self-test     show that bad includes fail
Exit status 1 names each offending line as file:line.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile

FAMILIES = ("common", "sliders", "filter", "grid", "buttons", "layout")

# What each family may include, itself and common included.
ALLOWED = {
    "common": {"common"},
    "sliders": {"common", "sliders"},
    "filter": {"common", "filter"},
    "grid": {"common", "filter", "grid"},
    "buttons": {"common", "buttons"},
    "layout": {"common", "layout"},
}

# Public headers whose family does not follow from a class's file pair:
# the family headers kept for forms and applications, the roles and the
# generated export header.
PUBLIC_HEADER_FAMILIES = {
    "Base.h": "buttons",
    "PushButtons.h": "buttons",
    "FlowLayout.h": "layout",
    "CMwGridRoles.h": "common",
    "vel_qt_widgets_export.h": "common",
}

INCLUDE_RE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
CLASS_RE = re.compile(r"^\s*class\s+(?:VEL_QT_WIDGETS_EXPORT\s+)?(\w+)\s*(?::|\{|$)", re.M)


class Tree:
    def __init__(self, root):
        self.root = os.path.abspath(root)
        self.src = os.path.join(self.root, "src", "vel_qt_widgets")
        self.public = os.path.join(self.root, "include", "vel_qt_widgets")
        self.errors = []
        # file name -> families whose folder holds a file of that name
        self.by_name = {}
        self.sources = []
        for dirpath, _, files in os.walk(self.src):
            for name in sorted(files):
                if not name.endswith((".h", ".cpp")):
                    continue
                path = os.path.join(dirpath, name)
                self.sources.append(path)
                family = self.family_of_source(path)
                if family:
                    self.by_name.setdefault(name, set()).add(family)
        self.headers = sorted(
            os.path.join(self.public, name)
            for name in os.listdir(self.public)
            if name.endswith(".h")
        )
        self.public_families = {}

    def rel(self, path):
        return os.path.relpath(path, self.root)

    def family_of_source(self, path):
        parts = os.path.relpath(path, self.src).split(os.sep)
        if len(parts) < 2 or parts[0] not in FAMILIES:
            return None
        return parts[0]

    def public_family(self, name, seen=()):
        if name in self.public_families:
            return self.public_families[name]
        family = PUBLIC_HEADER_FAMILIES.get(name)
        path = os.path.join(self.public, name)
        if family is None and os.path.exists(path):
            with open(path, encoding="utf-8") as f:
                text = f.read()
            # The family of its classes: the folder holding a file pair
            # named after one of them (or after the header itself).
            stems = [c.lower() for c in CLASS_RE.findall(text)]
            stems.append(os.path.splitext(name)[0].lower())
            for stem in stems:
                found = set()
                for suffix in (".cpp", "_p.h"):
                    found |= self.by_name.get(stem + suffix, set())
                if len(found) == 1:
                    family = found.pop()
                    break
            # A header that only gathers others takes their family.
            if family is None and name not in seen:
                gathered = set()
                for line in text.splitlines():
                    m = INCLUDE_RE.match(line)
                    if m and os.path.exists(os.path.join(self.public, os.path.basename(m.group(2)))):
                        gathered.add(self.public_family(os.path.basename(m.group(2)), seen + (name,)))
                if len(gathered) == 1 and None not in gathered:
                    family = gathered.pop()
        self.public_families[name] = family
        return family

    def target_family(self, including, kind, target):
        """The family of an included file, or None when it is not the library's."""
        base = os.path.basename(target)
        if target.startswith("vel_qt_widgets/private/"):
            return self.private_family(base, including, target)
        if target.startswith("vel_qt_widgets/"):
            if base == "vel_qt_widgets_export.h" or os.path.exists(os.path.join(self.public, base)):
                return self.known_public(base, including, target)
            return None
        if kind == '"':
            near = os.path.normpath(os.path.join(os.path.dirname(including), target))
            if os.path.exists(near):
                if os.path.dirname(near) == self.public:
                    return self.known_public(base, including, target)
                return self.family_of_source(near) if near.startswith(self.src + os.sep) else None
        if "/" in target:
            return None
        if base in self.by_name:
            return self.private_family(base, including, target)
        if base == "vel_qt_widgets_export.h" or os.path.exists(os.path.join(self.public, base)):
            return self.known_public(base, including, target)
        return None

    def known_public(self, name, including, target):
        family = self.public_family(name)
        if family is None:
            self.errors.append(
                "%s: #include <%s>: cannot tell the family of include/vel_qt_widgets/%s;"
                " add it to PUBLIC_HEADER_FAMILIES in %s"
                % (self.rel(including), target, name, os.path.basename(__file__))
            )
        return family

    def private_family(self, name, including, target):
        families = self.by_name.get(name, set())
        if len(families) == 1:
            return next(iter(families))
        if families:
            self.errors.append(
                "%s: #include \"%s\": the name is found in %s; private headers are"
                " included by file name and must be unique"
                % (self.rel(including), target, ", ".join(sorted(families)))
            )
        return None

    def check(self):
        offences = []
        files = [(p, self.family_of_source(p)) for p in self.sources]
        files += [(p, self.public_family(os.path.basename(p))) for p in self.headers]
        for path, family in files:
            if family is None:
                if path.startswith(self.public + os.sep):
                    self.known_public(os.path.basename(path), path, os.path.basename(path))
                else:
                    self.errors.append(
                        "%s: outside a family folder (%s)" % (self.rel(path), ", ".join(FAMILIES))
                    )
                continue
            with open(path, encoding="utf-8") as f:
                for number, line in enumerate(f, 1):
                    m = INCLUDE_RE.match(line)
                    if not m:
                        continue
                    target_family = self.target_family(path, m.group(1), m.group(2))
                    if target_family and target_family not in ALLOWED[family]:
                        offences.append(
                            "%s:%d: %s: %s may not include %s (it may include %s)"
                            % (
                                self.rel(path),
                                number,
                                line.strip(),
                                family,
                                target_family,
                                ", ".join(sorted(ALLOWED[family])),
                            )
                        )
        return offences + self.errors


def run(root):
    problems = Tree(root).check()
    for problem in problems:
        print(problem)
    if problems:
        print("%d include(s) against the family direction" % len(problems))
        return 1
    print("includes follow the family direction")
    return 0


def self_test(root):
    """Copies the tree, adds includes against the direction and some that are
    allowed, and expects exactly the bad ones to be named."""
    tree = Tree(root)

    def source(family, suffix=".cpp"):
        names = sorted(n for n, f in tree.by_name.items() if family in f and n.endswith(suffix))
        if not names:
            raise SystemExit("self-test: no %s file in %s" % (suffix, family))
        return names[0]

    def public(family):
        names = sorted(
            os.path.basename(h)
            for h in tree.headers
            if os.path.basename(h) not in PUBLIC_HEADER_FAMILIES
            and tree.public_family(os.path.basename(h)) == family
        )
        if not names:
            raise SystemExit("self-test: no public header of %s" % family)
        return names[0]

    def at(family, name):
        return "src/vel_qt_widgets/%s/%s" % (family, name)

    bad = [
        (at("common", source("common")), "#include <vel_qt_widgets/%s>" % public("grid")),
        (at("common", source("common")), '#include "%s"' % source("buttons", "_p.h")),
        (at("filter", source("filter")), '#include "%s"' % source("grid", "_p.h")),
        (at("sliders", source("sliders")), "#include <vel_qt_widgets/%s>" % public("buttons")),
        (at("buttons", source("buttons")), "#include <vel_qt_widgets/%s>" % public("layout")),
        (at("layout", source("layout")), '#include "../grid/%s"' % source("grid", "_p.h")),
        ("include/vel_qt_widgets/" + public("sliders"), '#include "%s"' % public("filter")),
        ("include/vel_qt_widgets/" + public("filter"), "#include <vel_qt_widgets/%s>" % public("grid")),
    ]
    good = [
        (at("grid", source("grid")), "#include <vel_qt_widgets/%s>" % public("filter")),
        (at("grid", source("grid")), '#include "%s"' % source("filter", "_p.h")),
        (at("layout", source("layout")), "#include <vel_qt_widgets/CMwGridRoles.h>"),
        (at("buttons", source("buttons")), "#include <QtWidgets/QTreeView>"),
        ("include/vel_qt_widgets/" + public("grid"), '#include "%s"' % public("filter")),
    ]
    with tempfile.TemporaryDirectory() as scratch:
        for part in ("src/vel_qt_widgets", "include/vel_qt_widgets"):
            shutil.copytree(os.path.join(root, part), os.path.join(scratch, part))
        expected = []
        for path, line in bad + good:
            full = os.path.join(scratch, path)
            with open(full, encoding="utf-8") as f:
                count = sum(1 for _ in f)
            with open(full, "a", encoding="utf-8") as f:
                f.write(line + "\n")
            if (path, line) in bad:
                expected.append("%s:%d: %s:" % (path, count + 1, line))
        result = subprocess.run(
            [sys.executable, os.path.abspath(__file__), scratch],
            stdout=subprocess.PIPE,
            universal_newlines=True,
        )
        lines = result.stdout.splitlines()
        missing = [e for e in expected if not any(n.startswith(e) for n in lines)]
        wrongly = [n for n in lines for p, l in good if n.startswith(p + ":") and l in n]
        if result.returncode != 1 or missing or wrongly:
            print(result.stdout)
            for e in missing:
                print("self-test: not named: %s" % e)
            for w in wrongly:
                print("self-test: an allowed include was named: %s" % w)
            return 1
    for e in expected:
        print("self-test: named as expected: %s" % e)
    print("self-test: all %d injected bad includes were named, no allowed one" % len(bad))
    return 0


def main(argv):
    here = os.path.dirname(os.path.abspath(__file__))
    root = os.path.dirname(here)
    args = argv[1:]
    if args and args[0] == "--self-test":
        return self_test(args[1] if len(args) > 1 else root)
    return run(args[0] if args else root)


if __name__ == "__main__":
    sys.exit(main(sys.argv))
