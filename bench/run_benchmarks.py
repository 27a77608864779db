#!/usr/bin/env python3
"""Build and run every Google Benchmark program of bench/, once built against
Qt 5 and once against Qt 6, and write docs/benchmarks.md: the figures, the
machine they were taken on, and for each figure its peer (Qt's stock class
doing the nearest job) side by side as a ratio, one ratio per build.

    bench/run_benchmarks.py                  # configure if needed, build, run, write
    bench/run_benchmarks.py --skip-build     # reuse the programs already built
    bench/run_benchmarks.py --report-only    # rewrite the report from the last run's JSON
    bench/run_benchmarks.py --only slider --only header    # a quick refresh of two programs
    bench/run_benchmarks.py --qt 6 --only flowlayout --output /tmp/b.md
    bench/run_benchmarks.py --list           # the programs and what a full run took

The Qt 5 build is the tree in build/ (preset "default"), the Qt 6 build the
one in build-qt6/ (preset "qt6"); either is configured from its preset when
it does not exist yet. Each program runs alone, the Qt 5 build's then the
Qt 6 build's, before the next program starts, so that both see about the
same load on a shared machine. A run with --only or --qt rewrites the whole
report: the programs and builds it leaves out keep the figures of their last
run, and each section says when its figures were taken.

Text written by hand under a program's tables (below the "notes" marker the
report carries) is kept when the report is rewritten.

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
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

# Which figure is compared with which. Keys are program names; each entry is
# (our benchmark, its peer benchmark). Arguments ("/1000") are matched between
# the two; a peer without arguments serves every argument of ours. The peer's
# Qt class is the label the peer benchmark sets (state.SetLabel).
PEERS = {
    "bench_csvload": [
        ("BM_LoadCsv", "BM_QtReadLineSplit"),
    ],
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

# Programs whose peak memory is measured too: each filter is run alone under
# /usr/bin/time -v, with the input's size (bytes) when it names a file.
PEAK_MEMORY = {
    "bench_csvload": [
        ("BM_LoadCsv/100000/", "/tmp/vel_bench_csv_100000.csv"),
        ("BM_LoadCsv/1000000/", "/tmp/vel_bench_csv_1000000.csv"),
        ("BM_LoadCsv/4500000/", "/tmp/vel_bench_csv_4500000.csv"),
        ("BM_QtReadLineSplit/100000/", "/tmp/vel_bench_csv_100000.csv"),
        ("BM_QtReadLineSplit/1000000/", "/tmp/vel_bench_csv_1000000.csv"),
    ],
}


def peak_rss_kib(exe, benchmark_filter, env):
    """Peak resident set of one benchmark run alone, from /usr/bin/time -v."""
    proc = subprocess.run(["/usr/bin/time", "-v", str(exe), "--benchmark_filter=" + benchmark_filter],
                          capture_output=True, text=True, env=env, check=True)
    m = re.search(r"Maximum resident set size \(kbytes\): (\d+)", proc.stderr)
    return int(m.group(1)) if m else None


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


def machine():
    """Facts about the machine, the same for both builds."""
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
    return info


def qt_version(cache, major):
    """The Qt release a build tree was configured against, from the version
    file of the QtCore package its cache points at."""
    qt_dir = cache.get("Qt%sCore_DIR" % major)
    if not qt_dir:
        return ""
    for name in ("Qt%sCoreConfigVersionImpl.cmake" % major, "Qt%sCoreConfigVersion.cmake" % major):
        version_file = Path(qt_dir) / name
        if version_file.exists():
            m = re.search(r'PACKAGE_VERSION\s+"?([0-9][0-9.]*)', version_file.read_text())
            if m:
                return m.group(1)
    return ""


def build_facts(cache, major):
    compiler = cache.get("CMAKE_CXX_COMPILER", "c++")
    return {
        "Qt": qt_version(cache, major) or "?",
        "Compiler": first_line([compiler, "--version"]) or compiler,
        "Build type": cache.get("CMAKE_BUILD_TYPE", "?"),
    }


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
    # Three significant digits; a value that rounds up to 1000 of a unit
    # (999.7 ms) is written in the next unit, not as "1e+03 ms".
    for unit, scale in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if float("%.3g" % ns) >= scale:
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


def pairs_of(program, runs):
    """Each of our figures with its peer: an ordered dict from the shown name
    to (our CPU time, peer shown name, peer label, peer CPU time, counters).
    The peer entries are None where the program has no peer for it."""
    pairs = dict(PEERS.get(program, []))
    peer_names = set(pairs.values())
    by_key = {split_name(name): name for name in runs}
    rows = {}
    for name, r in runs.items():
        base, args = split_name(name)
        if base in peer_names:
            continue
        peer_base = pairs.get(base)
        peer_name = (by_key.get((peer_base, args)) or by_key.get((peer_base, ""))) if peer_base else None
        peer = runs.get(peer_name) if peer_name else None
        shown = base + ("/" + args if args else "")
        counters = ", ".join("%s=%s" % (k, fmt_count(v)) for k, v in r["counters"].items())
        if peer:
            peer_base_shown, peer_args = split_name(peer_name)
            peer_shown = peer_base_shown + ("/" + peer_args if peer_args else "")
            rows[shown] = (r["cpu"], peer_shown, peer["label"] or "Qt", peer["cpu"], counters)
        else:
            rows[shown] = (r["cpu"], None, None, None, counters)
    return rows


def table_for(program, builds):
    """One table of the program's figures with the times and the ratio of
    each build that has figures for it, side by side."""
    present = [b for b in builds if program in b["results"]]
    per_build = [pairs_of(program, b["results"][program]) for b in present]
    shown_names = []
    for rows in per_build:
        for shown in rows:
            if shown not in shown_names:
                shown_names.append(shown)
    header = "| Benchmark | Peer (Qt class) |"
    align = "|---|---|"
    for b in present:
        header += " %s: ours / peer | %s ratio |" % (b["label"], b["label"])
        align += "---:|---:|"
    header += " Counters |"
    align += "---|"
    lines = [header, align]
    for shown in shown_names:
        peer_cell = ""
        cells = ""
        counters = []
        for rows in per_build:
            row = rows.get(shown)
            if row is None:
                cells += " | |"
                continue
            cpu, peer_shown, peer_label, peer_cpu, counter_text = row
            if peer_shown and not peer_cell:
                peer_cell = "`%s` (%s)" % (peer_shown, peer_label)
            if peer_shown:
                ratio = "**%.2f**" % (cpu / peer_cpu) if peer_cpu > 0 else "–"
                cells += " %s / %s | %s |" % (fmt_time(cpu), fmt_time(peer_cpu), ratio)
            else:
                cells += " %s | |" % fmt_time(cpu)
            counters.append(counter_text)
        if not peer_cell:
            peer_cell = "no peer yet"
        # Counters come from the data, so both builds normally agree; where
        # they do not, each build's are shown.
        distinct = [c for i, c in enumerate(counters) if c and c not in counters[:i]]
        if len(distinct) > 1:
            counter_cell = "; ".join("%s: %s" % (b["label"], c) for b, c in zip(present, counters) if c)
        else:
            counter_cell = distinct[0] if distinct else ""
        lines.append("| `%s` | %s |%s %s |" % (shown, peer_cell, cells, counter_cell))
    return lines


def peak_memory_for(program, builds):
    """The peak-memory table of the program, one column pair per build."""
    present = []
    for b in builds:
        rss_file = b["json_dir"] / (program + ".rss.json")
        if rss_file.exists():
            present.append((b, json.loads(rss_file.read_text())))
    if not present:
        return []
    baselines = ", ".join("%.0f MiB (%s)" % (rss["baseline_kib"] / 1024.0, b["label"])
                          for b, rss in present if rss.get("baseline_kib"))
    lines = []
    lines.append("Peak memory, each benchmark run alone under `/usr/bin/time -v` (maximum")
    lines.append("resident set; the program with no benchmark run takes %s):" % baselines)
    lines.append("")
    header = "| Benchmark | Input |"
    align = "|---|---:|"
    for b, _ in present:
        header += " %s peak RSS | %s peak RSS / input |" % (b["label"], b["label"])
        align += "---:|---:|"
    lines.append(header)
    lines.append(align)
    names = []
    sizes = {}
    for _, rss in present:
        for name, _, size in rss["peaks"]:
            if name not in names:
                names.append(name)
            if size:
                sizes[name] = size
    for name in names:
        size = sizes.get(name)
        row = "| %s | %s |" % (name.strip("/"), "%.1f MB" % (size / 1e6) if size else "")
        for _, rss in present:
            found = [(kib, sz) for n, kib, sz in rss["peaks"] if n == name]
            if not found or not found[0][0]:
                row += " | |"
                continue
            kib, sz = found[0]
            row += " %.0f MiB | %s |" % (kib / 1024.0, "%.2f" % (kib * 1024.0 / sz) if sz else "")
        lines.append(row)
    lines.append("")
    return lines


def fmt_count(value):
    return ("%d" % value) if float(value).is_integer() else ("%.4g" % value)


NOTES_MARKER = ("<!-- Notes written by hand go below this line; bench/run_benchmarks.py keeps "
                "them when it rewrites the report. -->")

# Sections of the report the script writes itself; any other "## " section
# was added by hand and is kept, at the end.
GENERATED_SECTIONS = {"Machine", "Duration of a run"}


def generated_part_end(section):
    """Where the generated part of a program's section ends, for a report
    written before it carried the notes marker: after the first table and,
    when there is one, the peak-memory paragraph and its table."""
    i = 0
    n = len(section)
    while i < n and not section[i].startswith("|"):
        i += 1
    while i < n and section[i].startswith("|"):
        i += 1
    j = i
    while j < n and not section[j].strip():
        j += 1
    if j < n and section[j].startswith("Peak memory, each benchmark run alone"):
        while j < n and not section[j].startswith("|"):
            j += 1
        while j < n and section[j].startswith("|"):
            j += 1
        i = j
    return i


def read_report(report, programs):
    """What the report being rewritten holds that the script cannot write
    again: per program the hand-written text under its tables and the whole
    section (for a program without figures in the build trees), and the
    sections that are not the script's."""
    notes = {}
    whole = {}
    extra = []
    if not report.exists():
        return notes, whole, extra
    title = None
    sections = []
    for line in report.read_text().splitlines():
        if line.startswith("## "):
            title = line[3:].strip()
            sections.append((title, []))
        elif title is not None:
            sections[-1][1].append(line)
    for title, section in sections:
        if title in programs:
            whole[title] = section
            if NOTES_MARKER in section:
                kept = section[section.index(NOTES_MARKER) + 1:]
            else:
                kept = section[generated_part_end(section):]
            while kept and not kept[0].strip():
                kept.pop(0)
            while kept and not kept[-1].strip():
                kept.pop()
            notes[title] = kept
        elif title not in GENERATED_SECTIONS:
            extra.append((title, section))
    return notes, whole, extra


def fmt_duration(seconds):
    if seconds is None:
        return ""
    minutes, rest = divmod(int(round(seconds)), 60)
    return "%d min %02d s" % (minutes, rest) if minutes else "%d s" % rest


def configure(build):
    """Configures a build tree that does not exist yet, from the preset
    that names it where there is one."""
    preset = {ROOT / "build": "default", ROOT / "build-qt6": "qt6"}.get(build["dir"])
    if preset and build["major"] == ("6" if preset == "qt6" else "5"):
        run(["cmake", "--preset", preset], cwd=str(ROOT))
    else:
        run(["cmake", "-S", str(ROOT), "-B", str(build["dir"]), "-DCMAKE_BUILD_TYPE=RelWithDebInfo",
             "-DVEL_QT_MAJOR=" + build["major"]])


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build-dir", default=str(ROOT / "build"),
                        help="the Qt 5 build tree (default: build, preset \"default\")")
    parser.add_argument("--qt6-build-dir", default=str(ROOT / "build-qt6"),
                        help="the Qt 6 build tree (default: build-qt6, preset \"qt6\")")
    parser.add_argument("--qt", action="append", choices=["5", "6"], default=[],
                        help="run only the build for this Qt major (repeatable; default: both)")
    parser.add_argument("--jobs", default="2", help="parallel build jobs (default: 2)")
    parser.add_argument("--skip-build", action="store_true", help="do not configure or build")
    parser.add_argument("--report-only", action="store_true",
                        help="write the report from the JSON files of the last run")
    parser.add_argument("--only", action="append", default=[],
                        help="run only programs whose name contains this text (repeatable)")
    parser.add_argument("--list", action="store_true",
                        help="list the programs with the duration of their last run, and stop")
    parser.add_argument("--output", default=str(ROOT / "docs" / "benchmarks.md"), help="report to write")
    args = parser.parse_args()

    all_builds = []
    for major, directory in (("5", args.build_dir), ("6", args.qt6_build_dir)):
        build_dir = Path(directory).resolve()
        all_builds.append({"major": major, "dir": build_dir, "json_dir": build_dir / "bench" / "json"})
    majors = args.qt or ["5", "6"]
    builds_to_run = [b for b in all_builds if b["major"] in majors]

    all_programs = sorted(p.stem for p in (ROOT / "bench").glob("bench_*.cpp"))
    programs = all_programs
    if args.only:
        programs = [p for p in programs if any(o in p for o in args.only)]
    if not programs:
        sys.exit("run_benchmarks: no benchmark program to run")

    if args.list:
        for program in programs:
            taken = []
            for b in all_builds:
                d = b["json_dir"] / (program + ".duration.json")
                if d.exists():
                    taken.append("Qt %s build %s" % (b["major"], fmt_duration(json.loads(d.read_text())["seconds"])))
            print("%-26s %s" % (program, ", ".join(taken) or "not run yet"))
        return

    if not args.skip_build and not args.report_only:
        for b in builds_to_run:
            if not (b["dir"] / "CMakeCache.txt").exists():
                configure(b)
            run(["cmake", "--build", str(b["dir"]), "--target", "benchmarks", "-j", args.jobs])
    for b in all_builds:
        b["cache"] = read_cache(b["dir"])
        configured = b["cache"].get("VEL_QT_MAJOR")
        if configured and configured != b["major"] and b in builds_to_run:
            sys.exit("run_benchmarks: %s is a Qt %s build, not Qt %s" % (b["dir"], configured, b["major"]))

    env = dict(os.environ)
    env.setdefault("QT_QPA_PLATFORM", "offscreen")
    if not args.report_only:
        for b in builds_to_run:
            for program in programs:
                exe = b["dir"] / "bench" / program
                if not exe.exists():
                    sys.exit("run_benchmarks: %s is not built (build the benchmarks target)" % exe)
            b["json_dir"].mkdir(parents=True, exist_ok=True)
        # One program at a time, the builds one after the other, so that
        # both builds' figures of a program are taken under about the same
        # load of the shared machine.
        for program in programs:
            for b in builds_to_run:
                exe = b["dir"] / "bench" / program
                out = b["json_dir"] / (program + ".json")
                # Written aside and moved in place once complete, so that an
                # interrupted run leaves the last complete figures.
                partial = out.with_suffix(".json.partial")
                started = time.monotonic()
                run([str(exe), "--benchmark_out=%s" % partial, "--benchmark_out_format=json"], env=env)
                seconds = time.monotonic() - started
                partial.replace(out)
                memory_seconds = None
                if program in PEAK_MEMORY and Path("/usr/bin/time").exists():
                    started = time.monotonic()
                    peaks = []
                    baseline = peak_rss_kib(exe, "^$", env)
                    for benchmark_filter, input_file in PEAK_MEMORY[program]:
                        size = os.path.getsize(input_file) if os.path.exists(input_file) else None
                        peaks.append([benchmark_filter, peak_rss_kib(exe, benchmark_filter, env), size])
                    (b["json_dir"] / (program + ".rss.json")).write_text(
                        json.dumps({"baseline_kib": baseline, "peaks": peaks}))
                    memory_seconds = time.monotonic() - started
                (b["json_dir"] / (program + ".duration.json")).write_text(
                    json.dumps({"seconds": seconds, "peak_memory_seconds": memory_seconds}))

    # The report covers every program with figures, also those of an earlier
    # (--only or --qt) run; each section says when its figures were taken.
    for b in all_builds:
        b["results"] = {}
        b["contexts"] = {}
        b["durations"] = {}
        for program in all_programs:
            out = b["json_dir"] / (program + ".json")
            if out.exists():
                try:
                    b["contexts"][program], b["results"][program] = results_of(out)
                except ValueError as error:
                    print("run_benchmarks: %s skipped, not complete JSON (%s)" % (out, error))
            d = b["json_dir"] / (program + ".duration.json")
            if d.exists():
                b["durations"][program] = json.loads(d.read_text())
        b["facts"] = build_facts(b["cache"], b["major"])
        version = b["facts"]["Qt"]
        b["label"] = "Qt " + (".".join(version.split(".")[:2]) if version != "?" else b["major"])
    builds = [b for b in all_builds if b["results"]]
    measured = [p for p in all_programs if any(p in b["results"] for b in builds)]
    if not measured:
        sys.exit("run_benchmarks: no figures in %s" % ", ".join(str(b["json_dir"]) for b in all_builds))

    output = Path(args.output)
    notes, previous_sections, extra_sections = read_report(
        output if output.exists() else ROOT / "docs" / "benchmarks.md", set(all_programs))

    info = machine()
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
    if len(builds) > 1:
        lines.append("Every program is built from the same sources against %s and against %s"
                     % (builds[0]["label"], builds[1]["label"]))
        lines.append("and run once for each, one right after the other; each build's ratio compares")
        lines.append("figures of one run, so the ratios of the two builds can be set side by side,")
        lines.append("while the absolute times of the two runs also differ by the load of the moment.")
        lines.append("The peer is the same stock class of the Qt release the program is built")
        lines.append("against.")
        lines.append("")
    lines.append("The notes under a program's tables were written when the figures they quote")
    lines.append("were taken, with the Qt 5 build unless they say otherwise.")
    lines.append("")
    lines.append("## Machine")
    lines.append("")
    lines.append("| | |")
    lines.append("|---|---|")
    for key, value in info.items():
        lines.append("| %s | %s |" % (key, value))
    which = " / ".join("%s build" % b["label"] for b in builds)
    for key in ("Qt", "Compiler", "Build type"):
        values = [b["facts"][key] for b in builds]
        if len(set(values)) == 1:
            lines.append("| %s | %s |" % (key, values[0]))
        else:
            lines.append("| %s (%s) | %s |" % (key, which, " / ".join(values)))
    cells = []
    for b in builds:
        loads = [c.get("load_avg") for c in b["contexts"].values() if c.get("load_avg")]
        if loads:
            cells.append("%.2f to %.2f (%s build)" % (min(l[0] for l in loads), max(l[0] for l in loads),
                                                     b["label"]))
    if cells:
        lines.append("| Load average (1 min) while measuring | %s |" % ", ".join(cells))
    library = [c.get("library_build_type") for b in builds for c in b["contexts"].values()]
    library = [l for l in library if l]
    if library:
        lines.append("| Google Benchmark library | %s build (the Debian package; it affects only the framework's own overhead) |"
                     % library[0])
    lines.append("")
    lines.append("The machine is shared with other builds, so absolute times carry noise; CPU")
    lines.append("time is reported because it is less affected by that than wall time.")
    lines.append("")
    for program in all_programs:
        if program not in measured:
            # Figures of an earlier run that the build trees no longer hold.
            if program in previous_sections:
                lines.append("## %s" % program)
                lines.extend(previous_sections[program])
                while lines and not lines[-1].strip():
                    lines.pop()
                lines.append("")
            continue
        lines.append("## %s" % program)
        lines.append("")
        text = describe(program)
        if text:
            lines.append(text)
            lines.append("")
        when = ["%s build %s" % (b["label"], b["contexts"][program].get("date", "?"))
                for b in builds if program in b["contexts"]]
        if when:
            lines.append("Measured: %s." % "; ".join(when))
            lines.append("")
        lines.extend(table_for(program, builds))
        lines.append("")
        lines.extend(peak_memory_for(program, builds))
        lines.append(NOTES_MARKER)
        lines.append("")
        if notes.get(program):
            lines.extend(notes[program])
            lines.append("")
    lines.append("## Duration of a run")
    lines.append("")
    lines.append("Wall time of each program's last run on the shared machine, with the runs")
    lines.append("alone under `/usr/bin/time -v` for the peak memory where there are some")
    lines.append("(`--list` prints the same). A full run is the sum of both columns, plus the")
    lines.append("build.")
    lines.append("")
    lines.append("| Program | " + " | ".join("%s build" % b["label"] for b in builds) + " |")
    lines.append("|---|" + "---:|" * len(builds))
    totals = [0.0] * len(builds)
    for program in measured:
        cells = []
        for i, b in enumerate(builds):
            d = b["durations"].get(program)
            if not d:
                cells.append("")
                continue
            seconds = d["seconds"] + (d.get("peak_memory_seconds") or 0.0)
            totals[i] += seconds
            cell = fmt_duration(seconds)
            if d.get("peak_memory_seconds"):
                cell += " (peak memory %s)" % fmt_duration(d["peak_memory_seconds"])
            cells.append(cell)
        lines.append("| %s | %s |" % (program, " | ".join(cells)))
    lines.append("| all | %s |" % " | ".join("**%s**" % fmt_duration(t) for t in totals))
    lines.append("")
    for title, section in extra_sections:
        lines.append("## %s" % title)
        lines.extend(section)
    while lines and not lines[-1].strip():
        lines.pop()
    lines.append("")
    output.parent.mkdir(parents=True, exist_ok=True)
    output.write_text("\n".join(lines))
    print("run_benchmarks: wrote %s" % output)


if __name__ == "__main__":
    main()
