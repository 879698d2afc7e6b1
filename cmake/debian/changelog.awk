# Turns CHANGELOG.md into a Debian changelog: one entry per "## " section, newest first,
# each note a "*" item wrapped at 78 columns, each "### " heading a "[ ... ]" line.
# Variables (awk -v): source (package name), unreleased (the version of the
# "Unreleased" section), maintainer ("Name <mail>"), date (RFC 2822).
function flush_note(    n, i, words, line) {
    if (note == "") return
    n = split(note, words, /[ \t]+/)
    line = "  *"
    for (i = 1; i <= n; i++) {
        if (words[i] == "") continue
        if (length(line) + 1 + length(words[i]) > 78 && line != "  *" && line != "   ") {
            print line
            line = "   "
        }
        line = line " " words[i]
    }
    print line
    note = ""
}
function close_entry() {
    if (!open) return
    flush_note()
    print ""
    print " -- " maintainer "  " date
    print ""
    open = 0
}
/^## / {
    close_entry()
    heading = substr($0, 4)
    if (heading == "Unreleased") {
        version = unreleased; dist = "UNRELEASED"
    } else {
        split(heading, parts, /[ \t]/); version = parts[1]; dist = "unstable"
    }
    print source " (" version ") " dist "; urgency=medium"
    print ""
    open = 1
    next
}
!open { next }
/^### / { flush_note(); print "  [ " substr($0, 5) " ]"; next }
/^- / { flush_note(); note = substr($0, 3); next }
/^[ \t]*$/ { flush_note(); next }
{ note = (note == "" ? $0 : note " " $0) }
END { close_entry() }
