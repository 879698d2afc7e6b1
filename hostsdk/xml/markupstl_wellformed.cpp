// A single pass over the text with no allocation: one scanner method per construct of
// the XML grammar that pugixml accepts more loosely than the grammar allows.
#include "markupstl_wellformed.h"

#include <cstring>

#include "markupstl_impl.h"

namespace {

bool IsXmlChar(unsigned long cp) {
    return cp == 0x9 || cp == 0xA || cp == 0xD || (cp >= 0x20 && cp <= 0xD7FF) ||
           (cp >= 0xE000 && cp <= 0xFFFD) || (cp >= 0x10000 && cp <= 0x10FFFF);
}

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

class Scanner {
  public:
    Scanner(const char *text, size_t len) : p_(text), end_(text + len), begin_(text) {
        if (Skip("\xEF\xBB\xBF")) {
            begin_ = p_; // a byte order mark may precede the declaration
        }
    }

    bool Document() {
        while (p_ < end_) {
            if (!(*p_ == '<' ? Markup() : Text())) {
                return false;
            }
        }
        return true;
    }

  private:
    const char *p_;
    const char *const end_;
    const char *begin_;
    bool element_seen_ = false;

    bool At(const char *literal) const {
        size_t n = std::strlen(literal);
        return static_cast<size_t>(end_ - p_) >= n && std::memcmp(p_, literal, n) == 0;
    }

    bool Skip(const char *literal) {
        if (!At(literal)) {
            return false;
        }
        p_ += std::strlen(literal);
        return true;
    }

    bool SkipSpace() {
        const char *start = p_;
        while (p_ < end_ && IsSpace(*p_)) {
            ++p_;
        }
        return p_ != start;
    }

    // One character, decoded from its shortest UTF-8 form.
    bool Char() {
        unsigned char c = static_cast<unsigned char>(*p_);
        int more = c < 0x80 ? 0 : c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC2 ? 1 : -1;
        if (more < 0 || end_ - p_ <= more) {
            return false;
        }
        unsigned long cp = more == 0 ? c : c & (0x3Fu >> more);
        for (int i = 1; i <= more; ++i) {
            unsigned char next = static_cast<unsigned char>(p_[i]);
            if ((next & 0xC0) != 0x80) {
                return false;
            }
            cp = cp << 6 | (next & 0x3F);
        }
        static const unsigned long kShortest[] = {0, 0x80, 0x800, 0x10000};
        p_ += more + 1;
        return cp >= kShortest[more] && IsXmlChar(cp);
    }

    bool Name() {
        if (p_ >= end_ || !noltdev_xml::IsXmlNameStart(static_cast<unsigned char>(*p_))) {
            return false;
        }
        while (p_ < end_ && noltdev_xml::IsXmlNameChar(static_cast<unsigned char>(*p_))) {
            if (!Char()) {
                return false;
            }
        }
        return true;
    }

    // "&#N;", "&#xH;" naming a legal character, or one of the five predefined entities.
    bool Reference() {
        ++p_;
        if (Skip("#")) {
            return CharacterReference();
        }
        for (const char *name : {"lt;", "gt;", "amp;", "apos;", "quot;"}) {
            if (Skip(name)) {
                return true;
            }
        }
        return false; // a bare '&' or an entity nobody declared
    }

    bool CharacterReference() {
        bool hex = Skip("x");
        const char *set = hex ? "0123456789abcdef0123456789ABCDEF" : "0123456789";
        unsigned long cp = 0;
        const char *digits = p_;
        for (; p_ < end_ && *p_ != ';' && cp <= 0x10FFFF; ++p_) {
            const char *d = *p_ != '\0' ? std::strchr(set, *p_) : nullptr;
            if (d == nullptr) {
                return false;
            }
            cp = cp * (hex ? 16 : 10) + static_cast<unsigned long>(d - set) % 16;
        }
        return p_ != digits && Skip(";") && IsXmlChar(cp);
    }

    bool Text() {
        while (p_ < end_ && *p_ != '<') {
            if (At("]]>")) {
                return false;
            }
            if (!(*p_ == '&' ? Reference() : Char())) {
                return false;
            }
        }
        return true;
    }

    bool Markup() {
        if (Skip("<!--")) {
            return Comment();
        }
        if (Skip("<![CDATA[")) {
            return Until("]]>");
        }
        if (Skip("<!DOCTYPE")) {
            return Doctype();
        }
        if (Skip("<?")) {
            return ProcessingInstruction();
        }
        if (Skip("</")) {
            return Name() && (SkipSpace(), Skip(">"));
        }
        ++p_;
        return StartTag();
    }

    // Characters up to and over the closing literal.
    bool Until(const char *close) {
        while (!Skip(close)) {
            if (p_ >= end_ || !Char()) {
                return false;
            }
        }
        return true;
    }

    bool Comment() {
        while (!At("--")) {
            if (p_ >= end_ || !Char()) {
                return false;
            }
        }
        return Skip("-->"); // "--" only closes a comment
    }

    // Before the root only, without entity declarations; quoted literals and the
    // internal subset may hold '>'.
    bool Doctype() {
        int depth = 0;
        while (p_ < end_ && !element_seen_) {
            char c = *p_;
            if (c == '"' || c == '\'') {
                const char close[] = {c, '\0'};
                ++p_;
                if (!Until(close)) {
                    return false;
                }
                continue;
            }
            if (At("<!ENTITY")) {
                return false;
            }
            depth += c == '[' ? 1 : c == ']' ? -1 : 0;
            if (!Char()) {
                return false;
            }
            if (c == '>' && depth == 0) {
                return true;
            }
        }
        return false;
    }

    bool ProcessingInstruction() {
        const char *target = p_;
        if (!Name()) {
            return false;
        }
        if (p_ - target == 3 && (target[0] | 0x20) == 'x' && (target[1] | 0x20) == 'm' &&
            (target[2] | 0x20) == 'l') {
            // the target "xml" in any case is reserved: only the declaration, first
            return target - 2 == begin_ && std::memcmp(target, "xml", 3) == 0 && Declaration();
        }
        return Skip("?>") || (SkipSpace() && Until("?>"));
    }

    // version first, then encoding and standalone as the declaration's attributes.
    bool Declaration() {
        if (!(SkipSpace() && Skip("version") && Attribute())) {
            return false;
        }
        for (;;) {
            bool spaced = SkipSpace();
            if (Skip("?>")) {
                return true;
            }
            if (!spaced || !(Skip("encoding") || Skip("standalone")) || !Attribute()) {
                return false;
            }
        }
    }

    bool StartTag() {
        if (!Name()) {
            return false;
        }
        element_seen_ = true;
        for (;;) {
            bool spaced = SkipSpace();
            if (Skip("/>") || Skip(">")) {
                return true;
            }
            if (!spaced || !Name() || !Attribute()) {
                return false;
            }
        }
    }

    // '=' and a quoted value without '<', its references well formed.
    bool Attribute() {
        SkipSpace();
        if (!Skip("=")) {
            return false;
        }
        SkipSpace();
        if (p_ >= end_ || (*p_ != '"' && *p_ != '\'')) {
            return false;
        }
        char quote = *p_++;
        while (p_ < end_ && *p_ != quote) {
            if (*p_ == '<' || !(*p_ == '&' ? Reference() : Char())) {
                return false;
            }
        }
        return p_++ < end_;
    }
};

} // namespace

namespace noltdev_xml {

bool IsLexicallyWellFormed(const char *text, size_t len) {
    return Scanner(text, len).Document();
}

} // namespace noltdev_xml
