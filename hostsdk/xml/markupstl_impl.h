// State behind CMarkupSTL: the parsed document (or the raw text it refused) and the
// cursor, shared by the files that implement the class.
#pragma once

#include <cstdio>
#include <pugixml.hpp>
#include <string>

#include "markupstl.h"

struct CMarkupSTL::Impl {
    pugi::xml_document doc;
    // Set when the text given to SetDoc was not one XML document; GetDoc returns it.
    bool raw = false;
    std::string raw_text;
    // The level being walked (the document node at top level) and its main element
    // (null when there is none yet).
    pugi::xml_node parent;
    pugi::xml_node main;

    Impl() : parent(doc) {}

    void ResetPos() {
        parent = doc;
        main = pugi::xml_node();
    }

    // Drops everything, leaving an empty (not raw) document at the document level.
    void Clear() {
        doc.reset();
        raw = false;
        raw_text.clear();
        ResetPos();
    }
};

namespace noltdev_xml {

// True for a usable element or attribute name: a letter, '_' or ':' (or any byte of a
// multi-byte UTF-8 sequence) first, then also digits, '-' and '.'.
inline bool IsXmlName(const char *name) {
    if (name == nullptr || *name == '\0') {
        return false;
    }
    for (const char *p = name; *p != '\0'; ++p) {
        unsigned char c = static_cast<unsigned char>(*p);
        bool start = c >= 0x80 || c == '_' || c == ':' || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        bool inner = (c >= '0' && c <= '9') || c == '-' || c == '.';
        if (!start && !(inner && p != name)) {
            return false;
        }
    }
    return true;
}

// An int as the cursor writes it ("%d").
struct IntText {
    char text[16];
    explicit IntText(int value) { std::snprintf(text, sizeof text, "%d", value); }
};

} // namespace noltdev_xml
