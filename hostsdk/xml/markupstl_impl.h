// State behind CMarkupSTL: the parsed document (or the raw text it refused) and the
// cursor, shared by the files that implement the class.
#pragma once

#include <pugixml.hpp>
#include <string>

#include "markupstl.h"

struct CMarkupSTL::Impl {
    pugi::xml_document doc;
    // The text given to SetDoc: parsed in place (the document points into it), or, when
    // it was not one XML document, kept as it came (raw) for GetDoc to return.
    std::string text;
    bool raw = false;
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
        if (doc.first_child()) {
            doc.reset(); // an empty document has nothing to drop
        }
        raw = false;
        text.clear();
        ResetPos();
    }
};

namespace noltdev_xml {

// True for a byte that may start a name: a letter, '_' or ':' (or any byte of a
// multi-byte UTF-8 sequence).
inline bool IsXmlNameStart(unsigned char c) {
    return c >= 0x80 || c == '_' || c == ':' || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// True for a byte that may follow the first: a start byte, a digit, '-' or '.'.
inline bool IsXmlNameChar(unsigned char c) {
    return IsXmlNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

// True for a usable element or attribute name.
inline bool IsXmlName(const char *name) {
    if (name == nullptr || !IsXmlNameStart(static_cast<unsigned char>(*name))) {
        return false;
    }
    for (const char *p = name + 1; *p != '\0'; ++p) {
        if (!IsXmlNameChar(static_cast<unsigned char>(*p))) {
            return false;
        }
    }
    return true;
}

// An int as the cursor writes it ("%d"), without going through printf; used as a
// temporary (text points into the object).
struct IntText {
    char digits[12];
    const char *text;
    explicit IntText(int value) {
        unsigned int rest =
            value < 0 ? 0u - static_cast<unsigned int>(value) : static_cast<unsigned int>(value);
        char *p = digits + sizeof digits - 1;
        *p = '\0';
        do {
            *--p = static_cast<char>('0' + rest % 10);
            rest /= 10;
        } while (rest != 0);
        if (value < 0) {
            *--p = '-';
        }
        text = p;
    }
};

} // namespace noltdev_xml
