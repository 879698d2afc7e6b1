// CMarkupSTL's main element: its name, its text and its attributes.
#include "markupstl_impl.h"

std::string CMarkupSTL::GetTagName() const {
    return m_impl->main.name();
}

std::string CMarkupSTL::GetData() const {
    return m_impl->main.text().get();
}

bool CMarkupSTL::SetData(const char *text) {
    pugi::xml_node main = m_impl->main;
    if (!main || main.find_child([](pugi::xml_node n) { return n.type() == pugi::node_element; })) {
        return false; // no element, or one that holds elements rather than text
    }
    return main.text().set(text != nullptr ? text : "");
}

bool CMarkupSTL::SetData(int value) {
    return SetData(noltdev_xml::IntText(value).text);
}

std::string CMarkupSTL::GetAttrib(const char *name) const {
    return name != nullptr ? m_impl->main.attribute(name).value() : "";
}

bool CMarkupSTL::SetAttrib(const char *name, const char *value) {
    pugi::xml_node main = m_impl->main;
    if (!main || !noltdev_xml::IsXmlName(name)) {
        return false;
    }
    pugi::xml_attribute attr = main.attribute(name);
    if (!attr) {
        attr = main.append_attribute(name);
    }
    return attr.set_value(value != nullptr ? value : "");
}

bool CMarkupSTL::SetAttrib(const char *name, int value) {
    return SetAttrib(name, noltdev_xml::IntText(value).text);
}
