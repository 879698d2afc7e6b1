#!/usr/bin/env bash
# Footprint of the module on the device: the release build of every cross target (-Os,
# presets "<target>-release", the module alone, no host SDK). Prints text, data and bss of
# libnoltDevSDK_special.so per target, then for armhf its largest sections and the largest
# stack frames from the compiler's -fstack-usage files.
#   scripts/footprint.sh            print the report
#   scripts/footprint.sh --doc      also rewrite docs/footprint.md with it (its History kept)
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/.." && pwd)
cd "$root"
# shellcheck source=scripts/lib.sh
. "$here/lib.sh"

# preset, Debian architecture whose toolchain builds it
targets=("armhf armhf" "armhf-time64 armhf" "armel armel" "mipsel mipsel" "s390x s390x" "arm64 arm64")
for entry in "${targets[@]}"; do
    read -r target arch <<<"$entry"
    bash scripts/install-cross.sh "$arch" >/dev/null
    cmake --preset "$target-release" >/dev/null
    cmake --build --preset "$target-release" >/dev/null
done

# the detailed report (sections, stack frames) is armhf's
build="build-armhf-release"
lib=$(readlink -f "$build/libnoltDevSDK_special.so")
size_tool=arm-linux-gnueabihf-size
frames=15

report() {
    local entry target arch triplet text data bss
    echo "## libnoltDevSDK_special.so (-Os)"
    echo
    echo "| target | text | data | bss | total |"
    echo "|---|---:|---:|---:|---:|"
    for entry in "${targets[@]}"; do
        read -r target arch <<<"$entry"
        triplet=$(cross_triplet "$arch")
        read -r text data bss _ < <("$triplet-size" -B "$(readlink -f "build-$target-release/libnoltDevSDK_special.so")" | tail -1)
        echo "| $target | $text | $data | $bss | $((text + data + bss)) |"
    done
    echo
    echo "armhf sections (size -A), largest first:"
    echo
    echo '```'
    "$size_tool" -A "$lib" | awk 'NR > 2 && $2 > 0 && $1 != "Total" && $1 !~ /^\.(debug|comment|ARM\.attributes)/' |
        sort -k2,2nr | awk '{ printf "%-20s %8d\n", $1, $2 }'
    echo '```'
    echo
    echo "## Largest stack frames on armhf (-fstack-usage), top $frames"
    echo
    echo "| bytes | kind | function |"
    echo "|---:|---|---|"
    find "$build/CMakeFiles/noltDevSDK_special_objects.dir" -name '*.su' -exec cat {} + |
        awk -F'\t' 'match($1, /^[^:]*:[0-9]+:[0-9]+:/) {
                         split($1, p, ":"); loc = p[1]; sub(".*/", "", loc);
                         printf "%d\t%s\t%s (%s:%s)\n", $2, $3, substr($1, RLENGTH + 1), loc, p[2] }' |
        sort -t$'\t' -k1,1nr | awk -v n="$frames" 'NR <= n' |
        awk -F'\t' '{ printf "| %s | %s | `%s` |\n", $1, $2, $3 }'
}

if [ "${1:-}" = "--doc" ]; then
    # the page's hand-kept history (from its "## History" heading on) stays as it is
    history=$(sed -n '/^## History/,$p' docs/footprint.md 2>/dev/null || true)
    {
        cat <<'DOC'
# Footprint on the device

The module alone (`libnoltDevSDK_special.so`, without cJSON, pugixml or any SDK library),
built for each cross target with Debian's cross compiler (gcc 12, `-Os`, the
`<target>-release` presets): 32-bit ARM hard float (`armhf`, and `armhf-time64` with a
64-bit `time_t`), 32-bit ARM soft float (`armel`), 32-bit little-endian MIPS (`mipsel`),
the big-endian `s390x` (64-bit) and 64-bit ARM (`arm64`). `text` includes the read-only data and the dynamic symbol
tables; `data` and `bss` are what the module adds to the process's writable memory. The
sections and stack frames are armhf's. Stack frames are per function, as gcc reports
them; "static" frames are exact, "dynamic" ones grow at run time (and "bounded" have a
known ceiling).

Reproduce (as root on Debian 12; installs the cross toolchains when missing):

```
scripts/footprint.sh          # prints the report; --doc rewrites this page with it
```

DOC
        report
        if [ -n "$history" ]; then
            printf '\n%s\n' "$history"
        fi
    } >docs/footprint.md
    cat docs/footprint.md
else
    report
fi
