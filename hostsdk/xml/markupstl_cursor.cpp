// CMarkupSTL's cursor: searching a level, stepping in and out, and adding elements.
#include <cstring>

#include "markupstl_impl.h"

namespace {

bool Matches(pugi::xml_node node, const char *name) {
    return node.type() == pugi::node_element &&
           (name == nullptr || *name == '\0' || std::strcmp(node.name(), name) == 0);
}

} // namespace

bool CMarkupSTL::FindElem(const char *name, bool restart) {
    Impl &m = *m_impl;
    pugi::xml_node node = (restart || !m.main) ? m.parent.first_child() : m.main.next_sibling();
    for (; node; node = node.next_sibling()) {
        if (Matches(node, name)) {
            m.main = node;
            return true;
        }
    }
    return false;
}

bool CMarkupSTL::IntoElem() {
    Impl &m = *m_impl;
    if (!m.main) {
        return false;
    }
    m.parent = m.main;
    m.main = pugi::xml_node();
    return true;
}

bool CMarkupSTL::OutOfElem() {
    Impl &m = *m_impl;
    if (m.parent == m.doc) {
        return false;
    }
    m.main = m.parent;
    m.parent = m.parent.parent();
    return true;
}

bool CMarkupSTL::AddElem(const char *name, const char *data) {
    if (!noltdev_xml::IsXmlName(name)) {
        return false;
    }
    Impl &m = *m_impl;
    if (m.raw) {
        // A refused text is no tree to add to: the document starts afresh.
        m.Clear();
    }
    pugi::xml_node node = m.main ? m.parent.insert_child_after(pugi::node_element, m.main)
                                 : m.parent.append_child(pugi::node_element);
    if (!node) {
        return false;
    }
    node.set_name(name);
    if (data != nullptr && *data != '\0') {
        node.text().set(data);
    }
    m.main = node;
    return true;
}

bool CMarkupSTL::AddElem(const char *name, int data) {
    return AddElem(name, noltdev_xml::IntText(data).text);
}
