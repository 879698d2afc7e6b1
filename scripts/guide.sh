#!/usr/bin/env bash
# Follows docs/first-application.md as a newcomer would: in an empty temporary directory,
# writes every file the page shows after a "<!-- guide: file NAME -->" line, and runs every
# ```sh block, in the page's order, in one shell (so variables and the directory carry
# over), with SDK set to this clone. Fails on the first command that fails.
#   scripts/guide.sh [PAGE]      default docs/first-application.md
#   GUIDE_KEEP=1                 keep the directory (printed) instead of removing it
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/.." && pwd)
page=$(cd "$(dirname "${1:-$root/docs/first-application.md}")" && pwd)/$(basename "${1:-first-application.md}")

# The page as one bash script: files through quoted here-documents, shell blocks as they
# stand, each announced with its line in the page.
to_script() {
    awk -v page="$(basename "$1")" '
        /^<!-- guide: file [^ ]+ -->$/ { file = $4; next }
        /^```/ && !inside {
            inside = 1; lang = substr($0, 4)
            if (file != "") { printf "echo \"== %s:%d: %s\"\ncat >%s <<'"'"'GUIDE_FILE_END'"'"'\n", page, NR, file, file; mode = "file" }
            else if (lang == "sh") { printf "echo \"== %s:%d\"\n", page, NR; mode = "sh" }
            else mode = "skip"
            next
        }
        /^```/ && inside {
            if (mode == "file") print "GUIDE_FILE_END"
            inside = 0; file = ""; next
        }
        inside && mode != "skip" { print }
    ' "$1"
}

work=$(mktemp -d /tmp/guide.XXXXXX)
if [ -z "${GUIDE_KEEP:-}" ]; then
    trap 'rm -rf "$work"' EXIT
else
    echo "guide: working in $work"
fi
to_script "$page" >"$work/.guide.sh"
if ! grep -q '^echo "== [^:]*:[0-9]*"$' "$work/.guide.sh"; then
    echo "guide: $(basename "$page") has no sh block to run" >&2
    exit 1
fi
start=$SECONDS
(cd "$work" && SDK=$root bash -euo pipefail .guide.sh)
echo "guide: every command of $(basename "$page") ran, $((SECONDS - start)) s"
