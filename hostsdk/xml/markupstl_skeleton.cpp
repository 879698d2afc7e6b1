// The kernel's skeletons, built node by node: the same tree the skeleton's text parses to.
#include "markupstl_skeleton.h"

#include "markupstl_impl.h"

bool CMarkupSTLSkeleton::Build(CMarkupSTL &doc, const char *root, const char *child) {
    CMarkupSTL::Impl &m = *doc.m_impl;
    m.Clear();
    pugi::xml_node decl = m.doc.append_child(pugi::node_declaration);
    pugi::xml_node top = m.doc.append_child(root);
    bool built = decl && decl.append_attribute("version").set_value("1.0") &&
                 decl.append_attribute("encoding").set_value("UTF-8") && top;
    if (built && child != nullptr) {
        built = top.append_child(child).append_child(pugi::node_pcdata).set_value("0");
    }
    if (!built) {
        m.Clear();
        return false;
    }
    m.parent = top;
    return true;
}
