# Turns the measured figures ("kind benchmark value" a line) into the table that `script/bench` prints.

{ figures[$1, $2] = $3 }

function get(kind, name) { return (kind SUBSEP name) in figures ? figures[kind, name] : 0 }

# How many times `of` fits into the figure, as text; "-" where one of them is missing.
function ratio(kind, name, of) {
    if (get(kind, name) == 0 || get(kind, of) == 0)
        return "-"
    return sprintf("%.2f", get(kind, name) / get(kind, of))
}

function row(what, promise, measured, instructions, met) {
    printf "%-58s  %-12s  %-22s  %-12s  %s\n", what, promise, measured, instructions, met
}

function judged(value, limit) { return value == "-" ? "" : value + 0 <= limit ? "yes" : "NO" }

# A piece of work against the bare parse of the same text.
function against_parse(what, name, limit, parse, measured) {
    parse = "BareParseOfTheSameText/10000"
    measured = ratio("time", name, parse)
    row(what, "<= " limit, measured " (" sprintf("%.1f ms", get("time", name) / 1000) ")",
        ratio("instructions", name, parse), judged(measured, limit))
}

# One request among 10,000 announcements against the same among 100.
function among_many(what, name, limit, measured) {
    measured = ratio("time", name "/10000", name "/100")
    row(what, "<= " limit, measured " (" sprintf("%.2f us", get("time", name "/10000")) ")",
        ratio("instructions", name "/10000", name "/100"), judged(measured, limit))
}

END {
    row("", "promised", "time", "instructions", "met")
    row("bare Expat parse of 10,000 announcements", "", \
        "1 (" sprintf("%.1f ms", get("time", "BareParseOfTheSameText/10000") / 1000) ")", "1", "")
    against_parse("Initialize from the tree, of bare parses", "Initialize/10000", 2.5)
    against_parse("text to tree to Initialize, of bare parses", "ParseAndInitialize/10000", 2.5)
    growth = ratio("time", "Initialize/40000", "Initialize/10000")
    row("Initialize of 40,000 against 10,000 (4 is linear)", "<= 5", growth, "", judged(growth, 5))
    against_parse("get_announcements to text, of bare parses", "GetAnnouncements/10000", 1)
    # A map of 10,000 is twice as deep as one of 100, and colder.
    among_many("get_announcement among 10,000, of among 100", "GetAnnouncement", 2)
    among_many("modify_room among 10,000, of among 100", "ModifyRoom", 2)
    among_many("remove_announcement among 10,000, of among 100", "RemoveAnnouncement", 2)
    rate = get("rate", "FullPlays/2000")
    play = get("instructions", "FullPlays/2000") / 2000
    row("rehearsed full plays a second", ">= 20000", sprintf("%.0f", rate), \
        play > 0 ? sprintf("%.0f a play", play) : "-", rate == 0 ? "" : rate >= 20000 ? "yes" : "NO")
    bytes = get("bytes", "MemoryOfTheAgent/10000")
    row("bytes an announcement, of 10,000", "<= 1536", sprintf("%.0f", bytes), "", \
        bytes == 0 ? "" : bytes <= 1536 ? "yes" : "NO")
}
