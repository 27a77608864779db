#!/usr/bin/env python3
"""Build and run every Google Benchmark program of bench/ and write
docs/benchmarks.md: the figures, the machine they were taken on, and for each
figure its peer (Qt's stock class doing the nearest job) side by side as a
ratio.

    bench/run_benchmarks.py                  # configure if needed, build, run, write
    bench/run_benchmarks.py --skip-build     # reuse the programs already built
    bench/run_benchmarks.py --report-only    # rewrite the report from the last run's JSON
    bench/run_benchmarks.py --only flowlayout --output /tmp/b.md

Only the Python standard library is used.
"""

import argparse
import datetime
import json
import os
import platform
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

# Which figure is compared with which. Keys are program names; each entry is
# (our benchmark, its peer benchmark). Arguments ("/1000") are matched between
# the two; a peer without arguments serves every argument of ours. The peer's
# Qt class is the label the peer benchmark sets (state.SetLabel).
PEERS = {
    "bench_filterproxy": [
        ("BM_CMwThreeConditions", "BM_QtFixedStringOneColumn"),
    ],
    "bench_flowlayout": [
        ("BM_SetGeometry", "BM_QtGridLayoutSetGeometry"),
        ("BM_SetGeometryGrid", "BM_QtGridLayoutSetGeometry"),
        ("BM_HeightForWidth", "BM_QtGridLayoutSizeHint"),
        ("BM_HeightForWidthGrid", "BM_QtGridLayoutSizeHint"),
        ("BM_SetGeometryWidgets", "BM_QtGridLayoutSetGeometryWidgets"),
    ],
    "bench_hierarchicalheader": [
        ("BM_ResizeToContents", "BM_QHeaderViewResizeToContents"),
        ("BM_PaintViewport", "BM_QHeaderViewPaintViewport"),
        ("BM_ResizeToContentsWalk", "BM_QHeaderViewResizeToContents"),
        ("BM_PaintViewportWalk", "BM_QHeaderViewPaintViewport"),
    ],
    "bench_grid": [
        ("BM_SetModelAndFirstPaint", "BM_QTreeViewSetModelAndFirstPaint"),
        ("BM_SelectionStatistics<numericColumn>", "BM_QTreeViewSelection<numericColumn>"),
        ("BM_SelectionStatistics<textColumn>", "BM_QTreeViewSelection<textColumn>"),
        ("BM_ColumnStatistics<numericColumn>", "BM_QSortFilterProxyModelSort<numericColumn>"),
        ("BM_ColumnStatistics<textColumn>", "BM_QSortFilterProxyModelSort<textColumn>"),
        ("BM_ColumnStatistics<uniqueTextColumn>", "BM_QSortFilterProxyModelSort<uniqueTextColumn>"),
    ],
    "bench_textstatistics": [
        ("BM_TextStatisticsColumn", "BM_QtLocaleAwareSort"),
        ("BM_TextStatisticsSelection", "BM_QtLocaleAwareSort"),
    ],
    "bench_slider": [
        ("BM_CMwQSliderPaint", "BM_QSliderPaint"),
        ("BM_CMwQRangeSliderPaint", "BM_QSliderPaint"),
        ("BM_CMwQRangeSliderPaintLabels", "BM_QSliderPaint"),
    ],
}

UNIT_NS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}


def run(cmd, **kwargs):
    print("+ " + " ".join(str(c) for c in cmd), flush=True)
    return subprocess.run(cmd, check=True, **kwargs)


def read_cache(build_dir):
    cache = {}
    path = build_dir / "CMakeCache.txt"
    if path.exists():
        for line in path.read_text(errors="replace").splitlines():
            m = re.match(r"^([A-Za-z0-9_]+):[A-Z]+=(.*)$", line)
            if m:
                cache[m.group(1)] = m.group(2)
    return cache


def first_line(cmd):
    try:
        out = subprocess.run(cmd, capture_output=True, text=True, check=False).stdout
        return out.splitlines()[0].strip() if out else ""
    except OSError:
        return ""


def machine(cache):
    info = {}
    info["Logical CPUs (nproc)"] = str(os.cpu_count())
    model = ""
    try:
        for line in Path("/proc/cpuinfo").read_text().splitlines():
            if line.startswith("model name"):
                model = line.split(":", 1)[1].strip()
                break
    except OSError:
        pass
    info["CPU"] = model or platform.processor() or platform.machine()
    try:
        for line in Path("/proc/meminfo").read_text().splitlines():
            if line.startswith("MemTotal:"):
                kib = int(line.split()[1])
                info["Memory"] = "%.1f GiB" % (kib / 1024.0 / 1024.0)
                break
    except OSError:
        pass
    info["System"] = "%s %s" % (platform.system(), platform.release())
    try:
        for line in Path("/etc/os-release").read_text().splitlines():
            if line.startswith("PRETTY_NAME="):
                info["System"] += " (%s)" % line.split("=", 1)[1].strip('"')
    except OSError:
        pass
    compiler = cache.get("CMAKE_CXX_COMPILER", "c++")
    info["Compiler"] = first_line([compiler, "--version"]) or compiler
    info["Build type"] = cache.get("CMAKE_BUILD_TYPE", "?")
    qt = ""
    qt_dir = cache.get("Qt5Core_DIR")
    if qt_dir:
        version_file = Path(qt_dir) / "Qt5CoreConfigVersion.cmake"
        if version_file.exists():
            m = re.search(r'PACKAGE_VERSION\s+"?([0-9][0-9.]*)', version_file.read_text())
            if m:
                qt = m.group(1)
    info["Qt"] = qt or "?"
    return info


def describe(program):
    """The leading comment block of bench/<program>.cpp, as one paragraph."""
    source = ROOT / "bench" / (program + ".cpp")
    lines = []
    for line in source.read_text().splitlines():
        if line.startswith("//"):
            lines.append(line[2:].strip())
        elif lines:
            break
    text = " ".join(l for l in lines if l)
    return text


def fmt_time(ns):
    for unit, scale in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if ns >= scale:
            return "%.3g %s" % (ns / scale, unit)
    return "%.3g ns" % ns


def split_name(name):
    """The benchmark's base name and its numeric arguments ("/1000"), without
    options such as "min_time:3.000" or "iterations:1"."""
    parts = name.split("/")
    args = "/".join(p for p in parts[1:] if re.fullmatch(r"-?[0-9]+", p))
    return parts[0], args


def counters_of(bench):
    skip = {"name", "run_name", "run_type", "repetitions", "repetition_index", "threads",
            "iterations", "real_time", "cpu_time", "time_unit", "label", "family_index",
            "per_family_instance_index", "aggregate_name", "aggregate_unit", "error_occurred",
            "error_message", "items_per_second", "bytes_per_second"}
    return {k: v for k, v in bench.items() if k not in skip and isinstance(v, (int, float))}


def results_of(path):
    data = json.loads(path.read_text())
    runs = {}
    for b in data.get("benchmarks", []):
        if b.get("run_type", "iteration") != "iteration":
            continue  # BigO / RMS aggregates
        scale = UNIT_NS.get(b.get("time_unit", "ns"), 1.0)
        runs[b["name"]] = {
            "cpu": b["cpu_time"] * scale,
            "real": b["real_time"] * scale,
            "label": b.get("label", ""),
            "iterations": b.get("iterations", 0),
            "counters": counters_of(b),
        }
    return data.get("context", {}), runs


def table_for(program, runs):
    pairs = dict(PEERS.get(program, []))
    peer_names = {p for p in pairs.values()}
    by_key = {split_name(name): name for name in runs}
    rows = []
    for name, r in runs.items():
        base, args = split_name(name)
        if base in peer_names:
            continue
        peer_base = pairs.get(base)
        peer_name = by_key.get((peer_base, args)) or by_key.get((peer_base, "")) if peer_base else None
        peer = runs.get(peer_name) if peer_name else None
        shown = base + ("/" + args if args else "")
        counters = ", ".join("%s=%s" % (k, fmt_count(v)) for k, v in r["counters"].items())
        if peer:
            ratio = "%.2f" % (r["cpu"] / peer["cpu"]) if peer["cpu"] > 0 else "–"
            peer_shown = split_name(peer_name)[0] + ("/" + split_name(peer_name)[1] if split_name(peer_name)[1] else "")
            rows.append("| `%s` | %s | `%s` (%s) | %s | **%s** | %s |" % (
                shown, fmt_time(r["cpu"]), peer_shown, peer["label"] or "Qt", fmt_time(peer["cpu"]), ratio,
                counters))
        else:
            rows.append("| `%s` | %s | no peer yet | | | %s |" % (shown, fmt_time(r["cpu"]), counters))
    return rows


def fmt_count(value):
    return ("%d" % value) if float(value).is_integer() else ("%.4g" % value)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build-dir", default=str(ROOT / "build"), help="CMake build tree (default: build)")
    parser.add_argument("--jobs", default="2", help="parallel build jobs (default: 2)")
    parser.add_argument("--skip-build", action="store_true", help="do not configure or build")
    parser.add_argument("--report-only", action="store_true",
                        help="write the report from the JSON files of the last run")
    parser.add_argument("--only", action="append", default=[],
                        help="run only programs whose name contains this text (repeatable)")
    parser.add_argument("--output", default=str(ROOT / "docs" / "benchmarks.md"), help="report to write")
    args = parser.parse_args()

    build_dir = Path(args.build_dir).resolve()
    if not args.skip_build and not args.report_only:
        if not (build_dir / "CMakeCache.txt").exists():
            run(["cmake", "-S", str(ROOT), "-B", str(build_dir), "-DCMAKE_BUILD_TYPE=RelWithDebInfo"])
        run(["cmake", "--build", str(build_dir), "--target", "benchmarks", "-j", args.jobs])

    bench_dir = build_dir / "bench"
    all_programs = sorted(p.stem for p in (ROOT / "bench").glob("bench_*.cpp"))
    programs = all_programs
    if args.only:
        programs = [p for p in programs if any(o in p for o in args.only)]
    if not programs:
        sys.exit("run_benchmarks: no benchmark program to run")

    env = dict(os.environ)
    env.setdefault("QT_QPA_PLATFORM", "offscreen")
    results = {}
    contexts = {}
    json_dir = build_dir / "bench" / "json"
    json_dir.mkdir(parents=True, exist_ok=True)
    if not args.report_only:
        for program in programs:
            exe = bench_dir / program
            if not exe.exists():
                sys.exit("run_benchmarks: %s is not built (build the benchmarks target)" % exe)
            out = json_dir / (program + ".json")
            run([str(exe), "--benchmark_out=%s" % out, "--benchmark_out_format=json"], env=env)
    # The report covers every program with figures, also those of an earlier
    # (--only) run; each section says when its figures were taken.
    for program in all_programs:
        out = json_dir / (program + ".json")
        if out.exists():
            contexts[program], results[program] = results_of(out)
    programs = [p for p in all_programs if p in results]
    if not programs:
        sys.exit("run_benchmarks: no figures in %s" % json_dir)
    context = contexts[programs[-1]]

    cache = read_cache(build_dir)
    info = machine(cache)
    loads = [c.get("load_avg") for c in contexts.values() if c.get("load_avg")]
    lines = []
    lines.append("# Benchmarks")
    lines.append("")
    lines.append("Written by `bench/run_benchmarks.py` on %s; run it again to refresh." %
                 datetime.date.today().isoformat())
    lines.append("Every figure is CPU time per iteration (Google Benchmark); each is set beside")
    lines.append("its peer, the stock Qt class doing the nearest job, measured in the same")
    lines.append("program. **Ratio** = our time / the peer's time: below 1 is faster than Qt's")
    lines.append("class, above 1 slower. The jobs are not identical (the notes of each program say")
    lines.append("how they differ), so read the ratios as orders of magnitude.")
    lines.append("")
    lines.append("## Machine")
    lines.append("")
    lines.append("| | |")
    lines.append("|---|---|")
    for key, value in info.items():
        lines.append("| %s | %s |" % (key, value))
    if loads:
        lines.append("| Load average (1 min) while measuring | %.2f to %.2f |"
                     % (min(l[0] for l in loads), max(l[0] for l in loads)))
    if context.get("library_build_type"):
        lines.append("| Google Benchmark library | %s build (the Debian package; it affects only the framework's own overhead) |"
                     % context["library_build_type"])
    lines.append("")
    lines.append("The machine is shared with other builds, so absolute times carry noise; CPU")
    lines.append("time is reported because it is less affected by that than wall time.")
    lines.append("")
    for program in programs:
        lines.append("## %s" % program)
        lines.append("")
        text = describe(program)
        if text:
            lines.append(text)
            lines.append("")
        when = contexts[program].get("date", "")
        if when:
            lines.append("Measured %s." % when)
            lines.append("")
        rows = table_for(program, results[program])
        lines.append("| Benchmark | Time | Peer (Qt class) | Peer time | Ratio | Counters |")
        lines.append("|---|---:|---|---:|---:|---|")
        lines.extend(rows)
        lines.append("")
    output = Path(args.output)
    output.parent.mkdir(parents=True, exist_ok=True)
    output.write_text("\n".join(lines))
    print("run_benchmarks: wrote %s" % output)


if __name__ == "__main__":
    main()
