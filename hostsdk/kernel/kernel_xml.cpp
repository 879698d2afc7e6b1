// The kernel's XML skeletons of a platform request and of an answer.
#include "markupstl_skeleton.h"
#include "noltdev_sdk_kernel_struct.h"

int noltdev_xml_init_req(CMarkupSTL &doc) {
    return CMarkupSTLSkeleton::Build(doc, "Request", nullptr) ? 0 : NOLTDEV_SDK_KERNEL_ERR_NOMEM;
}

int noltdev_xml_init_rsp(CMarkupSTL &doc) {
    return CMarkupSTLSkeleton::Build(doc, "Response", "Result") ? 0 : NOLTDEV_SDK_KERNEL_ERR_NOMEM;
}
