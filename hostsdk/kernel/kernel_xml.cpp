// The kernel's XML skeletons of a platform request and of an answer.
#include "markupstl.h"
#include "noltdev_sdk_kernel_struct.h"

namespace {

// Sets the document and leaves the cursor inside its root, before the root's children.
int InitInside(CMarkupSTL &doc, const char *text) {
    return doc.SetDoc(text) && doc.FindElem() && doc.IntoElem() ? 0 : NOLTDEV_SDK_KERNEL_ERR_NOMEM;
}

} // namespace

int noltdev_xml_init_req(CMarkupSTL &doc) {
    return InitInside(doc, "<?xml version=\"1.0\" encoding=\"UTF-8\"?><Request></Request>");
}

int noltdev_xml_init_rsp(CMarkupSTL &doc) {
    return InitInside(doc,
                      "<?xml version=\"1.0\" encoding=\"UTF-8\"?><Response><Result>0</Result></Response>");
}
