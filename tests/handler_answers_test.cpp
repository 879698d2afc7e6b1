// The platform's answers to the mapped-port query and to the unbind request: delivered,
// never answered.
#include "command_test.h"

namespace special_test {
namespace {

// `count` ports t0.. with NAT port 8000 + i and local port i.
std::string Ports(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += "<Port Type=\"t" + std::to_string(i) + "\" NatPort=\"" + std::to_string(8000 + i) +
                "\" LocalPort=\"" + std::to_string(i) + "\"/>";
    }
    return text;
}

noltDevSDK_special_voddns_dev_info DevInfo(int status, int ports) {
    noltDevSDK_special_voddns_dev_info info;
    std::memset(&info, 0, sizeof info);
    info.dev_status = status;
    for (int i = 0; i < ports; ++i) {
        std::snprintf(info.mapped_port_infos[i].type, sizeof info.mapped_port_infos[i].type, "t%d", i);
        info.mapped_port_infos[i].nat_port = 8000 + i;
        info.mapped_port_infos[i].local_port = i;
    }
    return info;
}

// An answer with this result and "DevInfo" children (no "DevInfo" for "-").
CommandCase Mapped(const char *result, const std::string &dev_info, int type, Bytes want = {}) {
    std::string info = dev_info == "-" ? "" : "<DevInfo>" + dev_info + "</DevInfo>";
    return {kPu2CenPltQueryDevInfoByDomainRsp,
            "<Response><Result>" + (result + ("</Result>" + info)) + "</Response>", type, want};
}

noltDevSDK_special_voddns_dev_info Fields() {
    noltDevSDK_special_voddns_dev_info info = DevInfo(2, 0);
    std::strcpy(info.dev_serial, "SN1");
    std::strcpy(info.nat_ip, "1.2.3.4");
    std::strcpy(info.local_ip, "10.0.0.200.200.");
    std::string(40, 'p').copy(info.mapped_port_infos[0].type, 31);
    return info;
}

const std::string kFields = "<Port Type=\"early\"/><LocalIP>10.0.0.200.200.200</LocalIP><Port Type=\"" +
                            std::string(40, 'p') +
                            "\"/><Domain></Domain><NatIP>1.2.3.4</NatIP><SubSeral>SN1</SubSeral>";

INSTANTIATE_TEST_SUITE_P(MappedPortAndUnbind, Command,
                         ::testing::Values(Mapped("1048585", Ports(2), 9, Rec(DevInfo(3, 2))),
                                           Mapped("0", "-", 9, Rec(DevInfo(2, 0))),
                                           // the array holds 16 ports; later ones are ignored
                                           Mapped("1052161", Ports(20), 9, Rec(DevInfo(2, 16))),
                                           // "Status" is read from the device's own (empty) answer document
                                           Mapped("0", "<Status>5</Status>", 9, Rec(DevInfo(0, 0))),
                                           // ports are taken after the last element found; texts are bounded
                                           Mapped("0", kFields, 9, Rec(Fields())),
                                           Mapped("1048586", Ports(1), -1),
                                           CommandCase{kPu2CenPltUnBindUserRsp, R"({"Result":260})", 8,
                                                       Rec(noltDevSDK_special_unbind_user{260})},
                                           CommandCase{kPu2CenPltUnBindUserRsp, "<Response/>", 8,
                                                       Rec(noltDevSDK_special_unbind_user{0})}));

} // namespace
} // namespace special_test
