// CMarkupSTL's document: construction, parsing with the well-formedness checks, printing,
// and the position reset.
#include <cstring>

#include "markupstl_impl.h"
#include "markupstl_spares.h"
#include "markupstl_wellformed.h"

namespace {

// The parse keeps the declaration and, through parse_fragment, any text at top level,
// so that the one-document check below can see it (pugixml drops it otherwise).
constexpr unsigned kParseFlags = pugi::parse_default | pugi::parse_declaration | pugi::parse_fragment;

// No indentation; a declaration is printed only when the document has one; empty
// elements print as a start and an end tag.
constexpr unsigned kPrintFlags =
    pugi::format_raw | pugi::format_no_declaration | pugi::format_no_empty_element_tags;

bool IsBlank(const char *text) {
    for (; *text != '\0'; ++text) {
        if (std::strchr(" \t\r\n", *text) == nullptr) {
            return false;
        }
    }
    return true;
}

// Exactly one root element, at most one declaration and only before anything else, and
// no text beside the root.
bool IsOneDocument(const pugi::xml_document &doc) {
    int elements = 0;
    bool first = true;
    for (pugi::xml_node node : doc.children()) {
        switch (node.type()) {
        case pugi::node_element:
            ++elements;
            break;
        case pugi::node_declaration:
            if (!first) {
                return false;
            }
            break;
        case pugi::node_pcdata:
        case pugi::node_cdata:
            if (!IsBlank(node.value())) {
                return false;
            }
            break;
        default:
            break;
        }
        first = false;
    }
    return elements == 1;
}

bool RepeatsAnAttribute(pugi::xml_node node) {
    for (pugi::xml_attribute a = node.first_attribute(); a; a = a.next_attribute()) {
        for (pugi::xml_attribute b = a.next_attribute(); b; b = b.next_attribute()) {
            if (std::strcmp(a.name(), b.name()) == 0) {
                return true;
            }
        }
    }
    return false;
}

// What the parsed tree shows: one document, each attribute named once per element.
bool IsWellFormedDocument(const pugi::xml_document &doc) {
    return IsOneDocument(doc) && !doc.find_node(RepeatsAnAttribute);
}

class AppendWriter : public pugi::xml_writer {
  public:
    explicit AppendWriter(std::string &out) : out_(out) {}
    void write(const void *data, size_t size) override;

  private:
    std::string &out_;
};

// Defined outside the class: the complexity gate's parser cannot read an inline body
// after "override".
void AppendWriter::write(const void *data, size_t size) {
    out_.append(static_cast<const char *>(data), size);
}

} // namespace

CMarkupSTL::CMarkupSTL() : m_impl(noltdev_xml::Spares<Impl>::Take()) {}

CMarkupSTL::CMarkupSTL(const char *text) : m_impl(noltdev_xml::Spares<Impl>::Take()) {
    SetDoc(text);
}

CMarkupSTL::~CMarkupSTL() {
    noltdev_xml::Spares<Impl>::Give(m_impl);
}

bool CMarkupSTL::SetDoc(const char *text) {
    Impl &m = *m_impl;
    m.Clear();
    if (text == nullptr) {
        return false;
    }
    // Parsed in a copy the state keeps, so that no buffer is allocated per document.
    size_t len = std::strlen(text);
    m.text.assign(text, len);
    bool lexical = noltdev_xml::IsLexicallyWellFormed(text, len);
    if (!lexical || !m.doc.load_buffer_inplace(&m.text[0], len, kParseFlags, pugi::encoding_utf8) ||
        !IsWellFormedDocument(m.doc)) {
        m.doc.reset();
        m.raw = true;
        m.text.assign(text, len); // the parse wrote into the copy
        return false;
    }
    return true;
}

std::string CMarkupSTL::GetDoc() const {
    if (m_impl->raw) {
        return m_impl->text;
    }
    std::string out;
    AppendWriter writer(out);
    m_impl->doc.save(writer, "", kPrintFlags);
    return out;
}

bool CMarkupSTL::IsWellFormed() const {
    return !m_impl->raw && m_impl->doc.document_element();
}

void CMarkupSTL::ResetPos() {
    m_impl->ResetPos();
}
