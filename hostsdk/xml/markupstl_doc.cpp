// CMarkupSTL's document: construction, parsing with the one-document check, printing,
// and the position reset.
#include <cstring>

#include "markupstl_impl.h"

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

class AppendWriter : public pugi::xml_writer {
  public:
    explicit AppendWriter(std::string &out) : out_(out) {}
    void write(const void *data, size_t size) override { out_.append(static_cast<const char *>(data), size); }

  private:
    std::string &out_;
};

} // namespace

CMarkupSTL::CMarkupSTL() : m_impl(new Impl) {}

CMarkupSTL::CMarkupSTL(const char *text) : m_impl(new Impl) {
    SetDoc(text);
}

CMarkupSTL::~CMarkupSTL() {
    delete m_impl;
}

bool CMarkupSTL::SetDoc(const char *text) {
    m_impl->Clear();
    if (text == nullptr) {
        return false;
    }
    pugi::xml_parse_result parsed = m_impl->doc.load_string(text, kParseFlags);
    if (!parsed || !IsOneDocument(m_impl->doc)) {
        m_impl->doc.reset();
        m_impl->raw = true;
        m_impl->raw_text = text;
        return false;
    }
    return true;
}

std::string CMarkupSTL::GetDoc() const {
    std::string out;
    GetDocInto(out);
    return out;
}

void CMarkupSTL::GetDocInto(std::string &out) const {
    if (m_impl->raw) {
        out += m_impl->raw_text;
        return;
    }
    AppendWriter writer(out);
    m_impl->doc.save(writer, "", kPrintFlags);
}

bool CMarkupSTL::IsWellFormed() const {
    return !m_impl->raw && m_impl->doc.document_element();
}

void CMarkupSTL::ResetPos() {
    m_impl->ResetPos();
}
