// The work-mode plan: the request's values laid over the application's current plan.
#include <climits>

#include "command_test.h"

namespace special_test {
namespace {

const std::string kActor = R"(<Actor PlanType="17" Channel="2"/>)";

// A "Date" with plans i = 0.. from "0i:30" to "0(i+1):00" in mode i + 1.
std::string Date(const std::string &weekday, int plans = 0) {
    std::string text = "<Date Weekday=\"" + weekday + "\">";
    for (int i = 0; i < plans; ++i) {
        text += "<Plan B=\"0" + std::to_string(i) + ":30\" E=\"0" + std::to_string(i + 1) +
                ":00\" EventArg=\"mode:" + std::to_string(i + 1) + "\"/>";
    }
    return text + "</Date>";
}

// The plan delivered: channel 2, this enable flag, and the current grid, or an empty one
// with `plans` segments of Date() on `day`.
CommandCase Plan(const std::string &children, int enable, bool current_grid, int day = 0, int plans = 0,
                 int recv_rc = 0) {
    noltDevSDK_special_plan want = CurrentPlan();
    want.channel = 2;
    want.enable_plan = enable;
    if (!current_grid) {
        std::memset(&want.special_work_mode_plan, 0, sizeof want.special_work_mode_plan);
    }
    for (int i = 0; i < plans; ++i) {
        noltDevSDK_special_work_mode_time_segment &segment = want.special_work_mode_plan.time[day][i];
        segment.mode = i + 1; // field by field: the record is compared with its padding
        segment.begin = i * 3600 + 1800;
        segment.end = (i + 1) * 3600;
    }
    return {kCenPlt2PuSetDevPlanReq, Request(children), 18, Rec(want), {118}, recv_rc ? "4" : "0", recv_rc};
}

CommandCase Fails(const std::string &children, const char *log, bool callbacks = true, int runtime_rc = 0) {
    CommandCase c{kCenPlt2PuSetDevPlanReq, Request(children), -1, {}, {}, "131", 0, callbacks, log};
    c.runtime_rc = runtime_rc;
    return c;
}

// A mode beyond the int range saturates, as the device's C library reads it.
CommandCase HugeMode() {
    CommandCase c =
        Plan(kActor + R"(<Date Weekday="1"><Plan B="00:30" E="01:00" EventArg="mode:3000000000"/></Date>)", 5,
             false, 1, 1);
    noltDevSDK_special_plan want;
    std::memcpy(&want, c.record.data(), sizeof want);
    want.special_work_mode_plan.time[1][0].mode = INT_MAX;
    c.record = Rec(want);
    return c;
}

// Any "Date", even one of no valid day, replaces the whole grid; days are read after
// "Actor" only, and at most seven of them.
INSTANTIATE_TEST_SUITE_P(
    Plan, Command,
    ::testing::Values(Plan("<Enable>0</Enable>" + kActor, 0, true),
                      Plan(kActor + Date("2", 2) + "<Enable>7</Enable>", 1, false, 2, 2),
                      Plan(kActor + Date("", 1), 5, false), Plan(kActor + Date("4", 6), 5, false, 4, 5),
                      Plan(Date("3", 1) + kActor, 5, true),
                      Plan(kActor + Date("9") + Date("/") + Date("x") + Date("7") + Date("9") + Date("9") +
                               Date("6", 1) + Date("5", 1),
                           5, false, 6, 1),
                      Plan(kActor, 5, true, 0, 0, 7), HugeMode(),
                      Fails(R"(<Actor PlanType="16"/>)", "unspport plan type \n"),
                      Fails("<Enable>1</Enable>", "without actor element.\n"),
                      Fails(kActor, "special domain cb is not init\n", false),
                      Fails(kActor, "Special SetDevplan get runtimeinfo error\n", true, -1)));

} // namespace
} // namespace special_test
