"""Writes the sections of a document that there are results of bench/run.sh for.

Other sections of the document stay as they are.
"""

import json
import pathlib
import re
import sys

GOALS = {
    # size: (painted, longest stall, whole result as a multiple of the bare C API's)
    "small": (16.0, None, 1.5),
    "large": (50.0, 100.0, None),
}
TITLES = {
    "small": "60,000 searchable rows, 100,000 cross references",
    "large": "1,500,000 searchable rows, 1,000,000 cross references",
}

INTRO = """## Searches

Made by

    cmake --preset release && cmake --build --preset release
    bench/run.sh

on {machine}, load average {load:.1f} at the start.
All times are milliseconds, medians of {small} runs (60,000 rows) and {large} runs (1,500,000 rows);
a stall is the longest of all runs.

- **Screen**: the real search screen, offscreen. *Painted* is from the change event of the control
  until the window with the new rows is painted, *whole* until the last row of the result is read,
  *stall* the longest time in between in which no event could be handled.
- **C API**: the same text, translated, through the engine's bare C API on the same enciphered
  file: until the first hundred rows are there, and until the end.
- **Ordinary**: the same search as a program would do it with `QSqlQueryModel` and `QTableView` over
  a plain SQLite file with the same indexes (not enciphered, `NOCASE` instead of our collation).
  The longest stall is that of setting the query or of fetching more.

The control that changed last decides the order: 1 number, 2 description, 3 customer's number,
4,1 kind. The last key is the one that is measured; before it the screen showed the search without
that key.

To reach: at 60,000 rows painted under 16 ms, whole within 1.5 times the C API or within those
16 ms; at 1,500,000 rows painted under 50 ms where the first rows can come from an index, no stall
over 100 ms. What is missed is set in bold.
"""


def read(path):
    """Medians of each case, and the worst stall, by side and case."""
    cases = {}
    for entry in json.loads(path.read_text())["benchmarks"]:
        aggregate = entry.get("aggregate_name")
        if aggregate not in ("median", "max"):
            continue
        side, search, order = re.sub(r"/iterations:.*", "", entry["run_name"]).split("/")
        case = cases.setdefault((side, search, order.removeprefix("ORDER BY ")), {})
        if aggregate == "max":
            case["stall"] = entry["stall_ms"]
        else:
            case.update(first=entry["real_time"], whole=entry["whole_ms"], rows=entry["rows"])
            case["runs"] = entry["repetitions"]
    return cases


def number(value, missed=False):
    text = f"{value:.1f}" if value < 100 else f"{value:,.0f}"
    return f"**{text}**" if missed else text


def row(size, key, ours, bare, ordinary):
    painted, stall, ratio = GOALS[size]
    # A whole result that is on the screen within the time for painting is not late.
    late = ratio and ours["whole"] > ratio * bare["whole"] and ours["whole"] > painted
    cells = [
        *key,
        f"{ours['rows']:,.0f}",
        number(ours["first"], ours["first"] > painted),
        number(ours["whole"], late),
        number(ours["stall"], stall and ours["stall"] > stall),
        number(bare["first"]),
        number(bare["whole"]),
        number(ordinary["first"]),
        number(ordinary["whole"]),
        number(ordinary["stall"]),
    ]
    return "| " + " | ".join(cells) + " |"


def table(size, cases):
    lines = [
        f"\n### {TITLES[size]}\n",
        "| Search | Order | Rows | Screen: painted | whole | stall | C API: first 100 | whole "
        "| Ordinary: painted | whole | stall |",
        "|---|---|" + "--:|" * 9,
    ]
    for side, search, order in cases:
        if side == "screen":
            key = (search, order)
            sides = (cases[(name, *key)] for name in ("screen", "C API", "ordinary"))
            lines.append(row(size, (search.replace("*", "\\*"), order), *sides))
    return "\n".join(lines)


def machine(context):
    model = "an unknown processor"
    for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            model = line.split(":", 1)[1].strip()
            break
    return f"{context['num_cpus']} cores of {model}"


def load(context):
    return context["load_avg"][0]


def searches(folder):
    results = {}
    for size in TITLES:
        ours = folder / f"{size}-ours.json"
        results[size] = read(ours) | read(folder / f"{size}-ordinary.json")
        context = json.loads(ours.read_text())["context"]
    runs = {size: next(iter(cases.values()))["runs"] for size, cases in results.items()}
    intro = INTRO.format(machine=machine(context), load=load(context), **runs)
    return intro + "".join(table(size, cases) + "\n" for size, cases in results.items())


VIEWS_INTRO = """## Part views

Made by the same command on the large catalogue, with a part of 20 and one of 1,000 items, 25
vehicles and a photo of 1600 by 1200 pixels each, load average {load:.1f} at the start; medians of
{runs} runs. From the event to the picture on the window.

| | To reach | Painted | longest of all runs |
|---|--:|--:|--:|
"""
VIEWS_GOALS = {"double click": 50, "list button": 50, "key in": 8, "row to row": 16}


def medians(results, *more):
    """Name, median, longest run (and the longest of `more` counters) and number of runs of each."""
    rows, worst = [], {}
    for entry in results["benchmarks"]:
        name = re.sub(r"/iterations:.*", "", entry["run_name"])
        if entry.get("aggregate_name") == "median":
            rows.append((name, entry["real_time"], entry["repetitions"]))
        elif entry.get("aggregate_name") == "max":
            worst[name] = [entry[counter] for counter in ("real_time", *more)]
    return [(name, median, worst[name], runs) for name, median, runs in rows]


def goal_of(goals, name):
    return next(goal for start, goal in goals.items() if name.startswith(start))


def section(path, intro, goals, *more):
    """One row a case: the median of its time, the longest, and the longest of `more` counters."""
    results = json.loads(path.read_text())
    rows = medians(results, *more)
    lines = [intro.format(load=load(results["context"]), runs=rows[0][3])]
    for name, median, worst, _ in rows:
        goal = goal_of(goals, name)
        cells = [name, f"{goal:,}", number(median, median > goal), *map(number, worst)]
        lines.append("| " + " | ".join(cells) + " |\n")
    return "".join(lines)


PRINTING_INTRO = """## Printing

Made by the same command: the print dialog's OK to a PDF at 600 dots per inch, from the press until
the document is whole in its file; load average {load:.1f} at the start; medians of {runs} runs. The
stall is the longest time in any run in which no event could be handled.

| | To reach | Printed | longest of all runs | stall |
|---|--:|--:|--:|--:|
"""
PRINTING_GOALS = {"list": 2000, "figure": 300}


FIGURE_INTRO = """## Figure

Made by the same command, or alone by

    QT_QPA_PLATFORM=offscreen:configfile=bench/screen-1.8.json build/release/bin/tarvo-bench-figure

on a figure of 300 numbers, each in three of thirty kits, load average {load:.1f} at the start. Opening
and crossing are from the event to the picture on the window; blinking is processor time, so that
10.0 is one hundredth of one core. Scale 1 is a window of 800 by 600 pixels, scale 1.8 one of 1440
by 1080.

| | Runs | To reach | Scale 1 | longest | Scale 1.8 | longest |
|---|--:|--:|--:|--:|--:|--:|
"""
FIGURE_GOALS = {"open": 50, "number to number": 16, "second of": 10}


def figure(folder):
    small, large = (json.loads((folder / f"figure-{scale}.json").read_text())
                    for scale in ("1", "1.8"))
    lines = [FIGURE_INTRO.format(load=load(small["context"]))]
    for one, two in zip(medians(small), medians(large)):
        goal = goal_of(FIGURE_GOALS, one[0])
        cells = [number(value, value > goal)
                 for _, median, worst, _ in (one, two) for value in (median, worst[0])]
        lines.append(f"| {one[0]} | {one[3]} | {goal} | {' | '.join(cells)} |\n")
    return "".join(lines)


COLD_INTRO = """## A file far away

Made by the same command, or alone by

    QT_QPA_PLATFORM=offscreen build/release/bin/tarvo-bench-cold build/release/bench/small

on the catalogue of 60,000 rows, with every page forgotten before the last key: what a share costs
whose server answers each read in 1 or 5 ms. A read is one call of the engine, nearly always of one
page of 4,096 bytes; the system's own reading ahead would save some of the rows in sequence.
Milliseconds to the picture on the window and to the last row. The opening's time is that of the key.
*First rows* are those that the grid shows before it lets its user go on typing; the rows of a whole
*screen* come with the first picture only where a read takes no time.

"""
COLD_OUTRO = """
What the first rows need, and why it is not less:

- Each search asks once, in one short read, whether somebody has written since. If nobody has, what was
  read before is in memory: the cache holds the indexes of the largest catalogue.
- Where the order's index is also the filter's, or there is no filter, each of the three tables (parts,
  components, kits) costs the way from its index's root to the first leaf, two or three pages at this
  size, and the next leaves as far as the grid reaches: 4 to 15 reads. No row of a table is fetched,
  because number and description both stand in the index. A filter that no index serves is asked of
  each row on the way, up to 176 pages of them until a screen is full.
- Where the filter has one index and the order another, the first row is known only when the whole
  range of the filter has been read: 37 to 46 reads are the leaves of its 2,728 or 5,011 rows.
- Of a customer's numbers that begin with 1 there are 508, and the parts that they lead to lie on some
  430 pages. Neither order lets them all come before the first row is shown. Counted in the file:
  - How many there are tells which way to go: 6 pages, 4 of them leaves.
  - By number, and by kind and number: the customer's 4,707 references stand on 35 leaves of one index
    in the order of the part's number, so that one leaf has some 14 of the wanted ones. The way to it
    is 3 pages, and from each one to its row 3 pages in each of the three tables: 18 pages for one
    row, no fewer with these indexes. 24 rows touch one leaf more of the references and 20 more of the
    tables: 39.
  - By description: the three indexes of the descriptions are walked, 85 rows a leaf, and each row is
    asked whether the customer has it: one of 118 has. That is 9 pages to the first leaves, 6 for
    the tables' highest codes, which tell whether the walk will be short, at most 37 of the references
    and one to two more for each row found, at most 59 for the first. In a catalogue so large that
    the walk would pass more than 5,000 rows for a screen, or of a handful of numbers, each is looked
    up in its table and all are sorted, as before.
  - The walk by description has its price in the whole result: it passes all rows, 768 reads where the
    508 look-ups were 445.
- A whole number leads through the index of the references, and through those of the three tables, from
  root to leaf: 14 to 18 reads.
- A whole result reads every page of its indexes once, and what has been read stays.
"""


def cold(folder):
    return COLD_INTRO + (folder / "cold.md").read_text() + COLD_OUTRO


UPDATE_INTRO = """## Updates

Made by the same command, or alone by

    QT_QPA_PLATFORM=offscreen build/release/bin/tarvo-bench-update /var/tmp/bench

beside the bare tools, both sides taking turns in the same run; load average {load:.1f} at the start.
The folder lies on a disk, a virtual one of the machine's, where a flush takes some ten milliseconds:
what a commit costs. Both sides commit in groups of a quarter of a second; the C API is given each
statement as a text.

| What | Ours | Beside it | Ratio | To reach |
|---|--:|--:|--:|--:|
"""
MOST_OF_C_API = 1.2
LEAST_OF_CURL = 0.8
LEAST_OF_SINGLE = 20


def update(folder):
    results = json.loads((folder / "update.json").read_text())
    script, download = results["benchmarks"]
    times, share = script["times_c_api"], download["of_curl"]

    def ratio(value, missed):
        return f"**{value:.2f}**" if missed else f"{value:.2f}"

    each, faster = script["ms_a_line_each_committed"], script["times_faster_than_each_committed"]
    return UPDATE_INTRO.format(load=load(results["context"])) + (
        f"| Script of {script['lines']:,.0f} lines of data "
        f"| {script['real_time']:.1f} s | C API: {script['c_api_s']:.1f} s "
        f"| {ratio(times, times > MOST_OF_C_API)} | at most {MOST_OF_C_API} |\n"
        f"| The same beside a commit a line | {script['real_time']:.1f} s "
        f"| {each * script['lines'] / 1000:.0f} s, of {each:.1f} ms a line "
        f"| {ratio(faster, faster < LEAST_OF_SINGLE)} | at least {LEAST_OF_SINGLE} |\n"
        f"| Download of 200 MB, the best of 5 | {download['MB_per_s']:.0f} MB/s "
        f"| curl: {download['curl_MB_per_s']:.0f} MB/s "
        f"| {ratio(share, share < LEAST_OF_CURL)} | at least {LEAST_OF_CURL} |\n")


def put(text, name, section):
    """The document with what stands between the section's marks replaced."""
    begin, end = f"<!-- {name}: begin -->\n", f"<!-- {name}: end -->\n"
    before, rest = text.split(begin)
    return before + begin + section + end + rest.split(end)[1]


# What writes a section, and the last of the files that it is made of.
SECTIONS = {
    "searches": (searches, "large-ordinary.json"),
    "cold": (cold, "cold.md"),
    "views": (lambda folder: section(folder / "views.json", VIEWS_INTRO, VIEWS_GOALS),
              "views.json"),
    "printing": (lambda folder: section(folder / "printing.json", PRINTING_INTRO, PRINTING_GOALS,
                                        "stall_ms"), "printing.json"),
    "figure": (figure, "figure-1.8.json"),
    "update": (update, "update.json"),
}


def main(folder, document):
    text = document.read_text()
    for name, (write, results) in SECTIONS.items():
        if (folder / results).exists():
            text = put(text, name, write(folder))
    document.write_text(text)


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]))
