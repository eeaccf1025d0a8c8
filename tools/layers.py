#!/usr/bin/env python3
"""Checks who may include whom: layers.py SOURCE_ROOT. Prints each violation and ends with status 1.

A file's name tells its layer: snake_case is free of the toolkit, CamelCase and frm* are windows; so is
everything in widgets/.
"""
import re
import sys
from pathlib import Path

# Folders of one entry stand side by side and do not include each other.
FREE = [["platform"], ["core"], ["analysis"], ["luminance"], ["filters", "viewer", "align", "color"]]
WINDOWS = [["widgets"], ["platform"], ["core"], ["analysis"], ["luminance"],
           ["filters", "viewer", "align", "color"], ["app"]]
MAIN_WINDOWS = {"frmExamine", "frmScale", "frmMask", "frmFilter", "frmAlign", "frmCombine", "frmColor"}
OURS = {folder for row in WINDOWS for folder in row}


def rank(rows, folder):
    return next((i for i, row in enumerate(rows) if folder in row), None)


def is_window(path):
    return path.startswith("widgets/") or bool(re.match(r"frm|.*[A-Z]", Path(path).stem))


def violation(source, included, quoted):
    """Why `source` may not include `included`, or None."""
    folder = Path(source).parts[0]
    if not quoted:
        toolkit = re.match(r"Q[A-Z]|Qt|q[a-z]+\.h$", included)
        if toolkit and not is_window(source) and source != "app/main.cpp":
            return "a toolkit header in a toolkit-free file"
        return None
    target = included.split("/")[0]
    if target not in OURS:
        return None if "/" not in included and included.endswith(".moc") else "a path not from the root"
    if source == "app/main.cpp":
        return None
    if is_window(included):
        if not is_window(source):
            return "a window in a toolkit-free file"
        own = Path(source).stem.split("_")[0]
        name = Path(included).stem
        if name in MAIN_WINDOWS and own != name and folder != "app":
            return "a main window in another file"
        rows = WINDOWS
    else:
        if is_window(source):
            # Windows use every toolkit-free file of their own or a lower folder; widgets those of core too.
            rows = WINDOWS
            if folder == "widgets" and target in ("core", "platform"):
                return None
        else:
            rows = FREE
    here, there = rank(rows, folder), rank(rows, target)
    if here is None or there is None or there > here or (there == here and target != folder):
        return f"{folder} may not use {target}"
    return None


def violations(root):
    for folder in sorted(OURS):
        for path in sorted((root / folder).glob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            source = f"{folder}/{path.name}"
            for number, line in enumerate(path.read_text().splitlines(), 1):
                match = re.match(r'\s*#\s*include\s+([<"])([^>"]+)[>"]', line)
                if not match:
                    continue
                reason = violation(source, match[2], match[1] == '"')
                if reason:
                    yield f"{source}:{number}: {match[2]}: {reason}"


# The check must be able to fail: each of these is wrong, and each of those is right.
WRONG = [("core/text.cpp", "QString", False), ("core/text.cpp", "qdebug.h", False),
         ("core/render.cpp", "core/frmPref.h", True), ("core/render.cpp", "analysis/histogram.h", True),
         ("filters/filter_table.cpp", "viewer/magnify.h", True), ("widgets/PictureBox.cpp", "viewer/frmInfo.h", True),
         ("viewer/frmExamine_views.cpp", "luminance/frmScale.h", True), ("core/text.cpp", "widgets/controls.h", True),
         ("viewer/frmExamine.cpp", "filters/filter_table.h", True), ("core/text.cpp", "tests/support/images.h", True),
         ("widgets/controls.h", "core/frmPref.h", True)]
RIGHT = [("app/main.cpp", "QApplication", False), ("viewer/frmExamine_views.cpp", "viewer/frmExamine.h", True),
         ("app/Factory.cpp", "luminance/frmScale.h", True), ("luminance/frmScale.h", "luminance/PreviewWindow.h", True),
         ("widgets/Thumbnail.cpp", "core/fit.h", True), ("core/frmPref.cpp", "widgets/controls.h", True),
         ("platform/QtPlatform.cpp", "QMessageBox", False), ("filters/grain.cpp", "core/progress.h", True),
         ("viewer/frmExamine.cpp", "analysis/views.h", True), ("core/text.cpp", "vector", False),
         ("widgets/controls.h", "QWidget", False)]


def main():
    for case in WRONG:
        assert violation(*case), f"the check lets {case} pass"
    for case in RIGHT:
        assert not violation(*case), f"the check refuses {case}"
    found = list(violations(Path(sys.argv[1])))
    print("\n".join(found) if found else "include rules hold")
    return 1 if found else 0


sys.exit(main())
