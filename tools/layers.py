#!/usr/bin/env python3
"""Checks who may include whom: layers.py SOURCE_ROOT. Prints each violation and ends with status 1.

A file's name tells its layer: snake_case is free of the toolkit, CamelCase and frm* are windows; so is
everything in widgets/.
"""
import functools
import re
import sys
from pathlib import Path

# Low to high; folders of one entry stand side by side and do not include each other.
FREE = [["platform"], ["base"], ["formats"], ["core"], ["analysis"], ["luminance"],
        ["filters", "viewer", "align", "color"]]
WINDOWS = [["platform"], ["widgets"], ["analysis"], ["preview"], ["luminance"],
           ["filters", "viewer", "align", "color"], ["app"]]
EVERYBODYS = {"platform", "base", "formats", "core"}  # their toolkit-free files serve every window
MAIN_WINDOWS = {"frmExamine", "frmScale", "frmMask", "frmFilter", "frmAlign", "frmCombine", "frmColor"}
OURS = {folder for row in FREE + WINDOWS for folder in row}
STORE = "core/modcv.h"
STORELESS = {"base", "formats", "filters", "align", "color"}  # what is no window there is kernel or format, but for
STORE_OPERATIONS = {"align/alignment"}


def rank(rows, folder):
    return next((i for i, row in enumerate(rows) if folder in row), None)


def is_window(path):
    return path.startswith("widgets/") or bool(re.match(r"frm|.*[A-Z]", Path(path).stem))


def needs_no_store(path, kernels):
    name = str(Path(path).with_suffix(""))
    inside = Path(path).parts[0] in STORELESS and not is_window(path) and name not in STORE_OPERATIONS
    return inside or name in kernels


def kernels_of(root):
    """The hot kernels, as the build lists them: folder/name without ending."""
    return {f"{folder}/{Path(source).stem}" for folder in OURS if (root / folder / "CMakeLists.txt").is_file()
            for sources in re.findall(r"vector_sources\(([^)]*)\)", (root / folder / "CMakeLists.txt").read_text())
            for source in sources.split()}


def sees_store(included, includes_of):
    """Whether including `included` brings the store with it."""
    seen, waiting = set(), [included]
    while waiting:
        header = waiting.pop()
        if header == STORE:
            return True
        if header not in seen:
            seen.add(header)
            waiting += includes_of(header)
    return False


def violation(source, included, quoted, includes_of, kernels):
    """Why `source` may not include `included`, or None."""
    folder = Path(source).parts[0]
    if not quoted:
        toolkit = re.match(r"Q[A-Z]|Qt|q[a-z]+\.h$", included)
        if toolkit and not is_window(source) and source != "app/main.cpp":
            return "a toolkit header in a toolkit-free file"
        return None
    if needs_no_store(source, kernels) and sees_store(included, includes_of):
        return "the store in a kernel or a format"
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
        if is_window(source) and target in EVERYBODYS:
            return None
        rows = WINDOWS if is_window(source) else FREE
    here, there = rank(rows, folder), rank(rows, target)
    if here is None or there is None or there > here or (there == here and target != folder):
        return f"{folder} may not use {target}"
    return None


INCLUDE = re.compile(r'\s*#\s*include\s+([<"])([^>"]+)[>"]')


def violations(root):
    @functools.cache
    def includes_of(header):
        path = root / header
        lines = path.read_text().splitlines() if path.is_file() else []
        return [found[2] for line in lines if (found := INCLUDE.match(line)) and found[1] == '"']

    kernels = kernels_of(root)
    for folder in sorted(OURS):
        for path in sorted((root / folder).glob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            source = f"{folder}/{path.name}"
            for number, line in enumerate(path.read_text().splitlines(), 1):
                match = INCLUDE.match(line)
                if not match:
                    continue
                reason = violation(source, match[2], match[1] == '"', includes_of, kernels)
                if reason:
                    yield f"{source}:{number}: {match[2]}: {reason}"


# The check must be able to fail: each of these is wrong, and each of those is right.
WRONG = [("base/text.cpp", "QString", False), ("base/text.cpp", "qdebug.h", False),
         ("core/render.cpp", "app/frmPref.h", True), ("core/render.cpp", "analysis/histogram.h", True),
         ("filters/filter_table.cpp", "viewer/magnify.h", True), ("widgets/PictureBox.cpp", "viewer/frmInfo.h", True),
         ("viewer/frmExamine_views.cpp", "luminance/frmScale.h", True), ("base/text.cpp", "widgets/controls.h", True),
         ("viewer/frmExamine.cpp", "filters/filter_table.h", True), ("base/text.cpp", "tests/support/images.h", True),
         ("widgets/controls.h", "app/frmPref.h", True), ("base/text.cpp", "core/modcv.h", True),
         ("formats/fits_format.cpp", "core/modcv.h", True), ("formats/fits_pixels.h", "core/modcv.h", True),
         ("luminance/deconvolution_kernels.cpp", "core/modcv.h", True), ("filters/grain.cpp", "core/modcv.h", True),
         ("filters/grain.cpp", "core/render.h", True), ("align/combine.h", "core/modcv.h", True),
         ("viewer/geometry.h", "core/read_out.h", True), ("preview/PreviewWindow.h", "luminance/curves.h", True)]
RIGHT = [("app/main.cpp", "QApplication", False), ("viewer/frmExamine_views.cpp", "viewer/frmExamine.h", True),
         ("app/Factory.cpp", "luminance/frmScale.h", True), ("luminance/frmScale.h", "preview/PreviewWindow.h", True),
         ("widgets/Thumbnail.cpp", "base/fit.h", True), ("app/frmPref.cpp", "widgets/controls.h", True),
         ("platform/QtPlatform.cpp", "QMessageBox", False), ("filters/grain.cpp", "base/progress.h", True),
         ("viewer/frmExamine.cpp", "analysis/views.h", True), ("base/text.cpp", "vector", False),
         ("widgets/controls.h", "QWidget", False), ("align/frmCombine.cpp", "core/modcv.h", True),
         ("viewer/view_table.h", "core/modcv.h", True), ("align/alignment.h", "core/modcv.h", True)]
HEADERS = {"core/render.h": [STORE], "core/read_out.h": ["base/marker.h", STORE]}  # what those include
KERNELS = {"luminance/deconvolution_kernels", "viewer/geometry"}


def main():
    for wanted, cases in ((True, WRONG), (False, RIGHT)):
        for case in cases:
            found = violation(*case, lambda header: HEADERS.get(header, []), KERNELS)
            assert bool(found) == wanted, f"the check says {found} of {case}"
    found = list(violations(Path(sys.argv[1])))
    print("\n".join(found) if found else "include rules hold")
    return 1 if found else 0


sys.exit(main())
