// The host SDK's fault table: which calls an armed pattern fails, and the names the
// simulator's fail step uses.
#include <gtest/gtest.h>

#include <string>

#include "noltdev_host.h"

namespace {

struct Pattern {
    int skip, count, every;
    const char *calls; // ten calls: 'x' fails, '.' succeeds
};

TEST(HostFault, ArmedPatternFailsTheRightCalls) {
    const Pattern kPatterns[] = {
        {0, 1, 0, "x........."},  {0, 3, 0, "xxx......."}, {2, 1, 0, "..x......."},
        {0, -1, 3, "..x..x..x."}, {1, 2, 2, "..x.x....."}, {0, 0, 0, ".........."},
    };
    for (const Pattern &p : kPatterns) {
        noltdev_host_fault_set(NOLTDEV_HOST_FAULT_KERNEL_SEND, p.skip, p.count, p.every, 7);
        std::string seen;
        for (int i = 0; i < 10; ++i) {
            int code = 0;
            seen += noltdev_host_fault_hit(NOLTDEV_HOST_FAULT_KERNEL_SEND, &code) ? 'x' : '.';
            EXPECT_EQ(seen.back() == 'x' ? 7 : 0, code);
        }
        EXPECT_EQ(p.calls, seen) << "skip " << p.skip << " count " << p.count << " every " << p.every;
        EXPECT_EQ(10, noltdev_host_fault_calls(NOLTDEV_HOST_FAULT_KERNEL_SEND));
    }
    noltdev_host_fault_clear();
    EXPECT_EQ(0, noltdev_host_fault_hit(NOLTDEV_HOST_FAULT_KERNEL_SEND, nullptr));
}

TEST(HostFault, NamesRoundTripAndUnknownOpsAreRefused) {
    for (int op = 0; op < NOLTDEV_HOST_FAULT_COUNT; ++op) {
        EXPECT_EQ(op, noltdev_host_fault_find(noltdev_host_fault_name(op)));
    }
    EXPECT_EQ(-1, noltdev_host_fault_find("nothing"));
    EXPECT_EQ(nullptr, noltdev_host_fault_name(NOLTDEV_HOST_FAULT_COUNT));
    EXPECT_EQ(-1, noltdev_host_fault_set(-1, 0, 1, 0, 0));
    EXPECT_EQ(0, noltdev_host_fault_hit(NOLTDEV_HOST_FAULT_COUNT, nullptr));
}

} // namespace
