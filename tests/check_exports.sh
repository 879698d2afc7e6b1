#!/bin/sh
# The module's shared object must define no platform function: on a device those come
# from the vendor SDK. The log's optional level query must stay a weak reference, so that
# the module still loads beside a kernel without it. Usage: check_exports.sh NM LIBRARY
nm_tool=$1
library=$2
found=$("$nm_tool" -D --defined-only "$library" | awk '{print $3}' |
    grep -E '^(noltdev_|noltDevSDK_report_|noltDevSDK_Shadow_|noltDevSDK_Common_|_ZN10CMarkupSTL|_ZNK10CMarkupSTL)')
if [ -n "$found" ]; then
    echo "the module defines platform functions:"
    echo "$found"
    exit 1
fi
exported=$("$nm_tool" -D --defined-only "$library" | awk '{print $3}' | grep -c '^noltDevSDK_special_')
if [ "$exported" -ne 7 ]; then
    echo "expected the 7 exported noltDevSDK_special_* functions, found $exported"
    exit 1
fi
binding=$("$nm_tool" -D --undefined-only "$library" | awk '$2 == "noltdev_debug_wanted" {print $1}')
if [ "$binding" != "w" ]; then
    echo "noltdev_debug_wanted must be referenced weakly (nm says '$binding')"
    exit 1
fi
echo "exports ok"
