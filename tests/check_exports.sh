#!/bin/sh
# The module's shared object defines exactly the functions the public header marks for
# export, and no other dynamic symbol, function or data: an internal name left visible
# could be taken over by a same-named function of another library in the process. The
# log's optional level query must stay a weak reference, so that the module still loads
# beside a kernel without it. A static library (.a) is read for its global symbols.
# Usage: check_exports.sh NM LIBRARY PUBLIC_HEADER
nm_tool=$1
library=$2
header=$3
case "$library" in
*.a) table=-g ;;
*) table=-D ;;
esac
expected=$(tr '\n' ' ' <"$header" | grep -oE 'NOLTDEVSDK_SPECIAL_API +int +noltDevSDK_special_[A-Za-z0-9_]+' |
    awk '{print $3}' | sort)
defined=$("$nm_tool" $table --defined-only "$library" | awk 'NF == 3 {print $3}' | sort)
if [ "$(echo "$expected" | wc -l)" -ne 7 ]; then
    echo "the public header should mark 7 functions for export, it marks:"
    echo "$expected"
    exit 1
fi
if [ "$defined" != "$expected" ]; then
    echo "the module's dynamic symbols differ from the 7 public functions; defined besides them:"
    echo "$defined" | grep -vxF "$expected"
    echo "missing:"
    echo "$expected" | grep -vxF "$defined"
    exit 1
fi
binding=$("$nm_tool" $table --undefined-only "$library" | awk '$2 == "noltdev_debug_wanted" {print $1}')
if [ "$binding" != "w" ]; then
    echo "noltdev_debug_wanted must be referenced weakly (nm says '$binding')"
    exit 1
fi
echo "exports ok: $(echo "$expected" | tr '\n' ' ')"
