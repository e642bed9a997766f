# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the tables of docs/performance.md out of the JSON of all benchmark programs, which has one value on a line. Takes
# the median of the repetitions where there are any, and the processor's time: a busy machine spoils that least.

function value(line) {
    sub(/^[^:]*: */, "", line)
    gsub(/^"|"?,?$/, "", line)
    return line
}

# A number with three digits that count, as plain decimals.
function digits(x) {
    x += 0
    return sprintf(x >= 100 ? "%.0f" : x >= 10 ? "%.1f" : x >= 1 ? "%.2f" : "%.3f", x)
}

# Microseconds, in the unit that suits them.
function duration(x) {
    return x >= 1000 ? digits(x / 1000) " ms" : digits(x) " µs"
}

# The repetitions were run in random order: back into that of the source.
function finish(   place) {
    if (kind == "median" || field["run_type"] == "iteration") {
        place = 10000 * file + 16 * field["family_index"] + field["per_family_instance_index"]
        lastPlace = place > lastPlace ? place : lastPlace
        name[place] = field["run_name"]
        scale = field["time_unit"] == "ns" ? 0.001 : field["time_unit"] == "ms" ? 1000 : 1
        wall[place] = field["real_time"] * scale
        time[place] = field["cpu_time"] * scale
        ns[place] = field["ns"]
        percent[place] = field["percent"]
        ratio[place] = field["ratio"]
        megabytes[place] = field["megabytes"]
        resident[place] = field["resident"]
        reserved[place] = field["virtual"]
        heap[place] = field["heap"]
        threads[place] = field["threads"]
        files[place] = field["files"]
    }
    kind = ""
    delete field
}

function addRow(i,   group, last) {
    gsub(/\/(repeats|iterations):[0-9]+|\/(manual|process)_time/, "", name[i])
    last = name[i]
    sub(/.*\//, "", last)
    group = substr(name[i], 1, length(name[i]) - length(last) - 1)

    if (group ~ /^playBlocks/)
        blocks = blocks sprintf("| %s | %s | %s | %s | %s |\n", substr(group, 12), last, digits(time[i]),
                                digits(percent[i]), digits(ns[i]))
    else if (group == "hostOneInstrument")
        hosting = hosting sprintf("| %s | %s | %s |\n", last, digits(ns[i]), digits(ratio[i]))
    else if (group == "addAllEq")
        equaliser = equaliser sprintf("| %s | %s | %s |\n", last, digits(ns[i]), digits(ratio[i]))
    else if (group == "holdInstances")
        instances = instances sprintf("| resident memory of %s | %s MB |\n| virtual memory of %s | %s MB |\n",
                                      held[last], digits(resident[i]), held[last], digits(reserved[i]))
    else if (name[i] == "createFurther")
        instances = instances sprintf("| creation of a further one, processor time | %s ms |\n", digits(time[i] / 1000))
    else if (group == "openAndClose")
        instances = instances sprintf("| left behind by %s: resident, virtual, on the heap | %.2f, %.2f, %.2f MB |\n" \
                                      "| left behind by %s: threads, open files | %d, %d |\n",
                                      last, resident[i], reserved[i], heap[i], last, threads[i], files[i])
    else if (group == "imageMemory")
        editor = editor sprintf("| %s | %s MB | |\n", drawn[name[i]], digits(megabytes[i]))
    else if (group == "idleEditor")
        editor = editor sprintf("| %s | %s %% | |\n", drawn[name[i]], digits(percent[i]))
    else if (name[i] in drawn)
        editor = editor sprintf("| %s | %s | %s |\n", drawn[name[i]], duration(time[i]), duration(wall[i]))
    else if (name[i] == "readAll")
        calls = calls sprintf("| `getParameter` | %s |\n", digits(ns[i] / 1000))
    else if (group in preset)
        presets = presets sprintf("| %s, %s | %s | %s |\n", preset[group], last, digits(time[i] / 1000),
                                  digits(wall[i] / 1000))
    else if (group in call)
        calls = calls sprintf("| %s, %s | %s |\n", call[group], last, digits(time[i]))
    else if (last ~ /^(middle|full|silence|four slots)$/ && group != "EQ") {
        if (!(group in known)) {
            known[group] = 1
            effects[++numEffects] = group
        }
        cost[group, last] = digits(ns[i])
    }
    else
        kinds = kinds sprintf("| %s, %s | %s |\n", group, last, digits(ns[i]))
}

BEGIN {
    call["write"] = "`setParameter`"
    call["saveState"] = "`getStateInformation`"
    call["restoreState"] = "`setStateInformation`"
    call["moveMultiFader"] = "`setParameter`, multi fader"
    call["create"] = "creation of a processor"
    held[1] = "the first instance"
    held[10] = "each further one"
    drawn["openEditor/warm:1"] = "open to the first picture, images decoded before"
    drawn["openEditor/warm:0"] = "the same, no image decoded yet"
    for (i = 0; i < 4; ++i)
        drawn["turnPage/page:" i] = "turn to page " i + 1 " and paint it all"
    drawn["followProcessor/allFlags:0"] = "one pass of 50 ms, nothing changed"
    drawn["followProcessor/allFlags:1"] = "one pass with all parameters changed"
    drawn["paintKnob/scale:1"] = "repaint of one knob at 100 %"
    drawn["paintKnob/scale:2"] = "repaint of one knob at 200 %"
    drawn["idleEditor/scale:100"] = "processor share of an open, idle editor at 100 %"
    drawn["idleEditor/scale:200"] = "the same at 200 %"
    drawn["imageMemory/scale:1"] = "images in memory, all pages at 100 %"
    drawn["imageMemory/scale:2"] = "images in memory, all pages at 200 %"
    preset["buildIndex"] = "index of all presets"
    preset["searchText"] = "text search"
    preset["filterCategories"] = "category filter"
    preset["refreshLists"] = "list and menu of a folder"
    preset["savePreset"] = "save of a preset"
    preset["loadPreset"] = "load of a preset without its fades"
    preset["allTexts"] = "texts of all 1507 parameters"
}
FNR == 1 { finish(); ++file }
/^    {/ { finish() }
/^      "/ {
    key = $1
    gsub(/[":]/, "", key)
    field[key] = value($0)
    if (key == "aggregate_name")
        kind = field[key]
}
END {
    finish()
    for (i = 0; i <= lastPlace; ++i)
        if (i in name)
            addRow(i)

    print "Measured on " about ".\n"
    print "### Blocks at 48 kHz\n"
    print "| instance | samples | µs a block | % of the block's time | ns a sample |\n|---|--:|--:|--:|--:|"
    print blocks
    print "### One instrument in a layer against the same instrument alone\n"
    print "| samples | ns a sample in a layer | ratio to alone |\n|--:|--:|--:|"
    print hosting
    print "### All EQ on four layers\n"
    print "| samples | ns a sample added | ratio to without |\n|--:|--:|--:|"
    print equaliser
    print "### Idle instances\n"
    print "| what | |\n|---|--:|"
    print instances
    print "### Calls outside the block\n"
    print "| call | µs |\n|---|--:|"
    print calls
    print "### Presets\n"
    print "| work | ms of the processor | ms in all |\n|---|--:|--:|"
    print presets
    print "### Effects at 48 kHz, ns a sample\n"
    print "| effect | middle | full | silence | four slots |\n|---|--:|--:|--:|--:|"
    for (i = 1; i <= numEffects; ++i)
        printf "| %s | %s | %s | %s | %s |\n", effects[i], cost[effects[i], "middle"], cost[effects[i], "full"],
            cost[effects[i], "silence"], cost[effects[i], "four slots"]
    print "\n| EQ and kinds of effects | ns a sample |\n|---|--:|"
    print kinds
    print "### The editor\n"
    print "| work | of the processor | in all |\n|---|--:|--:|"
    printf "%s", editor
}
