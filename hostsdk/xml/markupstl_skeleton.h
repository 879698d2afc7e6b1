// Builds the kernel's XML skeletons straight into a cursor, without parsing their text:
// the kernel makes one per message it sends or answers.
#pragma once

#include "markupstl.h"

struct CMarkupSTLSkeleton {
    // The document becomes the UTF-8 declaration and an element root, holding the element
    // child with text "0" when child is not NULL; the cursor is left inside root with no
    // main element. False when the document cannot grow.
    static bool Build(CMarkupSTL &doc, const char *root, const char *child);
};
