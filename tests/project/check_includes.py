#!/usr/bin/env python3
"""Fails when an include runs against the directions between the folders (docs/architecture.md)."""

import pathlib
import posixpath
import re
import tempfile

from project_files import project_files, run

# Folder -> folders it may include from, besides itself. Tests and benchmarks may include anything of ours.
MAY_INCLUDE = {
    "host": set(),
    "laser": {"host"},
    "features": {"host"},
    "reader": {"laser", "features", "host"},
    "writers": {"laser", "features", "host"},
    "display": {"laser", "features", "host"},
    "openhost": {"host"},
    "apps": {"laser", "features", "host", "openhost"},
    "examples": {"laser", "features", "host", "openhost"},
}
TESTS = {"tests", "benchmarks"}
AREAS = set(MAY_INCLUDE) | TESTS

# The entities of the tree know no model: of the host they see its mathematics, and the exception that they throw.
ENTITIES = re.compile(r"laser/ZETLaser(Entity|Group|Contour|Curve|TextEntity|ParameterEntity|Point)\w*\.(h|cpp)$")
ENTITIES_MAY_INCLUDE = re.compile(r"(host/ZETMathematics/|host/ZETSystem/ZETSysException\.h$|host/ZETHostGlobal\.h$|laser/)")

# (from, to) that are allowed beyond MAY_INCLUDE: the driver of a job is the only one that knows all its steps, the
# table of file types names their writers, the options of a job hold features, the outline says what texts and parameters
# hold, features ask the options for the selection, and the DXF emitter is a class for clients.
ALSO_ALLOWED = [
    (r"laser/ZETLaserProcesses(_p)?\.(h|cpp)$", r"(reader|writers|display|features)/"),
    (r"laser/ZETLaserFileTypes\.cpp$", r"writers/"),
    (r"laser/ZETLaserOptions\w*\.(h|cpp)$", r"features/"),
    (r"laser/ZETLaserOutline\.cpp$", r"features/"),
    (r"features/", r"laser/(ZETLaserOptions|ZETLaserGlobal)\.h$"),
    (r"(apps|examples)/", r"writers/ZETDxfParser\.h$"),
]
# (from, to, reason) that are refused although the folders would allow it.
ALSO_REFUSED = [
    (r"(reader|writers|display)/", r"laser/ZETLaserProcesses", "only the options and clients know the driver of a job"),
    (r"apps/zetlaser-job/check/", r"(?!apps/zetlaser-job/check/)",
     "what checks the files shares nothing with what writes them"),
]

# Libraries that only some folders may use, by the form of their headers.
LIBRARIES = [
    ("Open CASCADE", re.compile(r"(^opencascade/|\.[hlgp]xx$)"), ("openhost/", "tests/openhost/")),
    ("jsoncpp", re.compile(r"^(jsoncpp/)?json/"), ("openhost/", "apps/", "tests/openhost/", "tests/apps/")),
]

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"]+)[>"]', re.MULTILINE)
COMMENT = re.compile(r"/\*.*?\*/", re.DOTALL)


def resolve(source, quoted, name, files):
    """The file of ours that is meant, relative to the root; None for headers from elsewhere. An include that names one
    of our folders is ours, also when the file is missing."""
    places = ([posixpath.dirname(source)] if quoted else []) + ["", "host"]
    paths = [posixpath.normpath(posixpath.join(place, name)) for place in places]
    for path in paths:
        if path in files:
            return path
    for path in (posixpath.normpath(name), paths[0] if name.startswith("..") else ""):
        if path.split("/")[0] in AREAS:
            return path
    return None


def refusal(source, target):
    """Why source must not include target, or None."""
    own, other = source.split("/")[0], target.split("/")[0]
    if own in TESTS:
        return None
    if ENTITIES.match(source) and not ENTITIES_MAY_INCLUDE.match(target):
        return "entities of the tree include only the host's mathematics"
    for a, b, reason in ALSO_REFUSED:
        if re.match(a, source) and re.match(b, target):
            return reason
    if own == other or other in MAY_INCLUDE[own]:
        return None
    if any(re.match(a, source) and re.match(b, target) for a, b in ALSO_ALLOWED):
        return None
    return f"{own}/ must not include from {other}/"


def check(root):
    files = {str(name) for name in project_files(root)}
    sources = [name for name in sorted(files)
               if name.split("/")[0] in AREAS and re.search(r"\.(h|hpp|cpp|cxx|cc)$", name)]
    findings = []
    for source in sources:
        text = (root / source).read_text(encoding="utf-8")
        # Comments are blanked out, but their line ends are kept for the line numbers.
        text = COMMENT.sub(lambda comment: "\n" * comment.group().count("\n"), text)
        for match in INCLUDE.finditer(text):
            line = text.count("\n", 0, match.start()) + 1
            name = match.group(2)
            target = resolve(source, match.group(1) == '"', name, files)
            reasons = []
            if target:
                reasons.append(refusal(source, target))
            else:
                reasons += [f"{library} belongs to {' '.join(places)} alone" for library, form, places in LIBRARIES
                            if form.search(name) and not source.startswith(places)]
            findings += [f"{source}:{line}: {name}: {reason}" for reason in reasons if reason]
    return findings, len(sources)


# (file, include line, whether it is refused)
PLANTED = [
    ("writers/A.cpp", '#include "reader/B.h"', True),
    ("writers/A.cpp", '#  include "../reader/B.h"', True),
    ("writers/A.cpp", '#include <reader/B.h>', True),
    ("writers/A.cpp", '/* a\n comment */ \n#include "display/B.h"', True),
    ("writers/A.cpp", '// #include "display/B.h"', False),
    ("writers/A.cpp", '#include "laser/ZETLaserGroup.h"', False),
    ("writers/A.cpp", '#include "laser/ZETLaserProcesses.h"', True),
    ("writers/A.cpp", '#include "C.h"', False),
    ("writers/A.cpp", '#include <QString>', False),
    ("writers/A.cpp", '#include "openhost/B.h"', True),
    ("reader/A.cpp", '#include "writers/B.h"', True),
    ("reader/A.cpp", '#include "display/B.h"', True),
    ("reader/A.cpp", '#include "features/B.h"', False),
    ("reader/A.cpp", '#include <ZETComposites/ZETCompPly.h>', False),
    ("reader/A.cpp", '#include <TopoDS_Face.hxx>', True),
    ("display/A.cpp", '#include "writers/B.h"', True),
    ("features/A.cpp", '#include "laser/ZETLaserOptions.h"', False),
    ("features/A.cpp", '#include "laser/ZETLaserGroup.h"', True),
    ("features/A.cpp", '#include "reader/B.h"', True),
    ("features/A.cpp", '#include "openhost/B.h"', True),
    ("host/ZETGeometry/A.h", '#include "laser/ZETLaserGlobal.h"', True),
    ("host/ZETGeometry/A.h", '#include <openhost/B.h>', True),
    ("host/ZETGeometry/A.h", '#include <ZETComposites/ZETCompPly.h>', False),
    ("host/ZETGeometry/A.h", '#include <gp_Pnt.hxx>', True),
    ("laser/A.cpp", '#include "reader/B.h"', True),
    ("laser/A.cpp", '#include "features/B.h"', True),
    ("laser/A.cpp", '#include <json/json.h>', True),
    ("laser/ZETLaserProcesses.cpp", '#include "reader/B.h"', False),
    ("laser/ZETLaserProcesses.cpp", '#include "openhost/B.h"', True),
    ("laser/ZETLaserFileTypes.cpp", '#include "writers/B.h"', False),
    ("laser/ZETLaserFileTypes.h", '#include "writers/B.h"', True),
    ("laser/ZETLaserFileTypes.cpp", '#include "reader/B.h"', True),
    ("laser/ZETLaserOptions.cpp", '#include "features/B.h"', False),
    ("laser/ZETLaserOptions.cpp", '#include "writers/B.h"', True),
    ("laser/ZETLaserOutline.cpp", '#include "features/B.h"', False),
    ("laser/ZETLaserOutline.h", '#include "features/B.h"', True),
    ("laser/ZETLaserGroup.h", '#include <ZETMathematics/ZETMathPoint.h>', False),
    ("laser/ZETLaserCurve.cpp", '#include <ZETSystem/ZETSysException.h>', False),
    ("laser/ZETLaserCurve.cpp", '#include <ZETSystem/ZETSysMessageQueue.h>', True),
    ("laser/ZETLaserGroup.h", '#include <ZETComposites/ZETCompPly.h>', True),
    ("laser/ZETLaserTextEntity.h", '#include "features/B.h"', True),
    ("openhost/A.cpp", '#include "laser/ZETLaserGlobal.h"', True),
    ("openhost/A.cpp", '#include <TopoDS_Face.hxx>\n#include <json/json.h>', False),
    ("apps/A.cpp", '#include <json/json.h>', False),
    ("apps/A.cpp", '#include <TopoDS_Face.hxx>', True),
    ("apps/A.cpp", '#include "writers/ZETLaserWriter.h"', True),
    ("apps/A.cpp", '#include "writers/ZETDxfParser.h"', False),
    ("apps/zetlaser-job/check/A.cpp", '#include "laser/ZETLaserOptions.h"', True),
    ("apps/zetlaser-job/check/A.cpp", '#include <ZETComposites/ZETCompPly.h>', True),
    ("apps/zetlaser-job/check/A.cpp", '#include "../JobError.h"', True),
    ("apps/zetlaser-job/check/A.cpp", '#include "B.h"', False),
    ("apps/zetlaser-job/check/A.cpp", '#include <QString>', False),
    ("apps/zetlaser-job/A.cpp", '#include "check/B.h"', False),
    ("tests/writers/A.cpp", '#include "reader/B.h"', False),
    ("tests/writers/A.cpp", '#include <TopoDS_Face.hxx>', True),
]


def self_test():
    """Each planted include alone in a tree: the check must find exactly the refused ones."""
    findings = []
    for source, text, is_refused in PLANTED:
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for name in (source, "writers/C.h", "host/ZETComposites/ZETCompPly.h", "host/ZETMathematics/ZETMathPoint.h",
                         "host/ZETSystem/ZETSysException.h", "host/ZETSystem/ZETSysMessageQueue.h",
                         "apps/zetlaser-job/JobError.h", "apps/zetlaser-job/check/B.h"):
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text("", encoding="utf-8")
            (root / source).write_text(f"\n{text}\n", encoding="utf-8")
            found, _ = check(root)
            if len(found) != (1 if is_refused else 0):
                findings.append(f"planted {source}: {text!r}: expected {'one' if is_refused else 'no'} finding, got {found}")
    return findings, len(PLANTED)


if __name__ == "__main__":
    run(__doc__, check, "sources", self_test, "planted includes")
