// The device log reader, its conversion to a scenario and expectations, and the
// departure of a PC run from the log.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "log_prefix.h"
#include "log_reader.h"
#include "log_replay.h"
#include "log_scenario.h"
#include "scenario.h"

namespace {

// A level-4 excerpt as the host log writes it: a report, a framed command and its
// answer, a raw command, a sleep drop and a multi-line JSON report.
const char kLog[] =
    "[DEBUG] special_extend_data_route_cb 0\n"
    "[ERROR] s:305e\n"
    "[INFO] \n"
    "<?xml version=\"1.0\"?><Request><DevSerial>DS1</DevSerial><Status Type=\"ICR\" Value=\"1\">"
    "</Status></Request>\n"
    "[ERROR] R:498d\n"
    "[INFO] xml: <Request><Type>OneClickMute</Type><Value>1</Value><UserDefine MsgSeq=\"106\">"
    "</UserDefine></Request>\n"
    "[ERROR] s:498e\n"
    "[INFO] \n"
    "<Response><Result>0</Result><Time>202611241000</Time></Response>\n"
    "[ERROR] R:4c92\n"
    "[ERROR] R:498d\n"
    "[DEBUG] preview: device sleep!\n"
    "[ERROR] R:49af\n"
    "[INFO] xml: {\"subserial\":\"CH1\"}\n"
    "[ERROR] s:49b0\n"
    "[INFO] \n"
    "\n"
    "[ERROR] s:30a1\n"
    "[INFO] \n"
    "{\n"
    "\t\"subserial\":\t\"DS1\"\n"
    "}\n";

std::vector<std::string> Lines(const std::string &text) {
    return sim::SplitLines(text.back() == '\n' ? text.substr(0, text.size() - 1) : text);
}

// Each line of the log rewritten by `edit`.
std::string EachLine(const std::string &text, std::string (*edit)(const std::string &, size_t)) {
    std::string out;
    std::vector<std::string> lines = Lines(text);
    for (size_t i = 0; i < lines.size(); i++) {
        out += edit(lines[i], i);
    }
    return out;
}

std::string Convert(const std::string &text, bool timing = false) {
    return sim::ConvertLog(sim::ReadDeviceLog(text), "dev.log", timing).scenario;
}

TEST(DeviceLog, PrefixesLineEndsAndOtherLinesGiveTheSameScenario) {
    struct Case {
        const char *name;
        std::string (*edit)(const std::string &, size_t);
    } cases[] = {
        {"kernel timestamp",
         [](const std::string &l, size_t i) { return "[  12" + std::to_string(i) + ".456789] " + l + "\n"; }},
        {"syslog", [](const std::string &l, size_t) { return "Nov 24 10:00:01 cam app[123]: " + l + "\n"; }},
        {"thread and priority", [](const std::string &l, size_t) { return "<6>[tid 812] " + l + "\n"; }},
        {"CRLF", [](const std::string &l, size_t) { return l + "\r\n"; }},
        // before each of the module's log calls (a call's own lines stay together)
        {"other modules' lines between",
         [](const std::string &l, size_t) {
             return (l[0] == '[' ? "[WARNING] [net] link up, rssi -50\n" : "") + l + "\n";
         }},
    };
    std::string want = Convert(kLog);
    for (const Case &c : cases) {
        EXPECT_EQ(Convert(EachLine(kLog, c.edit)), want) << c.name;
    }
}

TEST(DeviceLog, WhatEachCommandLeft) {
    sim::DeviceLog log = sim::ReadDeviceLog(kLog);
    std::string seen;
    for (const sim::LogEntry &e : log.entries) {
        char row[96];
        std::snprintf(row, sizeof row, "%c%x:%d:%d:%u|", "RSE"[static_cast<int>(e.kind)], e.command,
                      static_cast<int>(e.body_state), e.has_body, e.seq);
        seen += row;
    }
    // event; report; command seq 106 and its answer; raw; dropped; wake and its empty
    // answer; the JSON report
    EXPECT_EQ(seen, "E0:4:0:0|S305e:4:1:0|R498d:0:0:106|S498e:4:1:0|R4c92:1:0:0|R498d:3:0:0|R49af:0:0:0|"
                    "S49b0:4:1:0|S30a1:4:1:0|");
    EXPECT_EQ(log.serial, "DS1");
    EXPECT_EQ(log.entries[2].body, "<Request><Type>OneClickMute</Type><Value>1</Value></Request>");
    EXPECT_EQ(log.entries[8].body, "{\n\t\"subserial\":\t\"DS1\"\n}");
}

TEST(DeviceLog, CommandsWithoutTheirBodyAreLeftOutWithTheirLine) {
    struct Case {
        const char *log;
        sim::LogBody state;
    } cases[] = {
        {"[ERROR] R:498d\n[ERROR] s:498e\n", sim::LogBody::Missing}, // level 1
        {"[ERROR] R:498d\n", sim::LogBody::Missing},                 // cut at the end
        {"[ERROR] R:498d\n[INFO] xml: <Request><Type>Spea\n[ERROR] R:4c92\n",
         sim::LogBody::Cut}, // vendor cut
        {"[ERROR] R:498d\n[INFO] xml: <Request><Type>Spea", sim::LogBody::Cut},
        {"[ERROR] R:498d\n[ERROR] SpecialPlatformReqAndRspBushandle XML parse failed, cmd = 0x498d\n",
         sim::LogBody::Unparsed},
    };
    for (const Case &c : cases) {
        sim::DeviceLog log = sim::ReadDeviceLog(c.log);
        ASSERT_FALSE(log.entries.empty()) << c.log;
        EXPECT_EQ(log.entries[0].body_state, c.state) << c.log;
        sim::LogConversion conv = sim::ConvertLog(log, "dev.log", false);
        EXPECT_EQ(conv.replayable, 0) << c.log;
        ASSERT_EQ(conv.left_out.size(), 1u) << c.log;
        EXPECT_EQ(conv.left_out[0].compare(0, 27, "1: kCenPlt2PuSetKeyValueReq"), 0) << conv.left_out[0];
    }
}

TEST(DeviceLog, OddStampsAndBodies) {
    // a sequence stamped with "%d" above 0x7FFFFFFF; the unbind answer's body as it came;
    // a log that starts in the middle of a body
    sim::DeviceLog log =
        sim::ReadDeviceLog("Type>1</Type></Request>\n\t\"a\": 1\n}\n"
                           "[ERROR] R:498d\n[INFO] xml: <Request><UserDefine MsgSeq=\"-1\"/></Request>\n"
                           "[ERROR] R:4c87\n[DEBUG] SpecialUnbindUserRsp\n[INFO] {\"Result\":0}\n");
    ASSERT_EQ(log.entries.size(), 2u);
    EXPECT_EQ(log.entries[0].seq, 0xFFFFFFFFu);
    EXPECT_EQ(log.entries[0].body, "<Request></Request>");
    EXPECT_EQ(log.entries[1].body, "{\"Result\":0}");
    EXPECT_EQ(log.entries[1].body_state, sim::LogBody::Logged);
}

TEST(DeviceLog, SyslogEscapesAndTimestamps) {
    // syslog keeps a message of several lines on one, its line ends and tabs escaped
    sim::DeviceLog log =
        sim::ReadDeviceLog("Nov 24 10:00:01 cam app[1]: [ERROR] s:30a1\n"
                           "Nov 24 10:00:01 cam app[1]: [INFO] #012{#012#011\"a\":#0111#012}\n");
    ASSERT_EQ(log.entries.size(), 1u);
    EXPECT_EQ(log.entries[0].body, "{\n\t\"a\":\t1\n}");
    struct Case {
        const char *line;
        const char *text;
        double time;
    } cases[] = {
        {"[  123.456789] [INFO] R:1", "R:1", 123.456789},
        {"Nov  4 10:00:01 cam app[123]: R:1", "R:1", 4 * 86400 + 36001},
        {"2026-11-24T10:00:01.5Z R:1", "R:1", 24 * 86400 + 36001.5},
        {"<6>[tid 7] [main:12] R:1", "R:1", -1},
        {"[{\"a\":1}]", "[{\"a\":1}]", -1}, // a JSON line is not a tag
        {"\t\"a\": 1", "\t\"a\": 1", -1},
    };
    for (const Case &c : cases) {
        double time = 0;
        EXPECT_EQ(sim::StripLogPrefix(c.line, &time), c.text) << c.line;
        EXPECT_NEAR(time, c.time, 1e-6) << c.line;
    }
}

TEST(DeviceLog, ScenarioSteps) {
    std::string scn = Convert(kLog);
    // the event after the report's polls; sleep around the dropped command; the raw
    // command by identifier; the wake without a stamped sequence
    for (const char *want : {"serial DS1\nevent sdk_kernel_event_online\npoll 2\n",
                             "send kCenPlt2PuSetKeyValueReq seq 106 <Request><Type>OneClickMute</Type>",
                             "send kCenPlt2PuAIMemberPicQueryReq\nsleep on\nsend kCenPlt2PuSetKeyValueReq\n"
                             "sleep off\nsend kCenPlt2PuWakeReq {\"subserial\":\"CH1\"}\npoll 2\n",
                             "sent by identifier"}) {
        EXPECT_NE(scn.find(want), std::string::npos) << want << "\n--- in ---\n" << scn;
    }
    sim::Scenario parsed = sim::ParseScenario(scn, "dev.scn");
    EXPECT_TRUE(parsed.errors.empty()) << parsed.errors[0];
    // a body of several lines goes in a <<END block, whose terminator it never holds
    std::string multi = Convert("[ERROR] R:49af\n[INFO] xml: {\n[INFO] \"a\": \"END\"}\n");
    EXPECT_NE(multi.find("send kCenPlt2PuWakeReq <<END\n{\n\"a\": \"END\"}\nEND\n"), std::string::npos)
        << multi;
    std::string timed = Convert("[  10.0] R:4c92\n[  12.5] R:4c92\n[ 100.0] R:4c92\n", true);
    EXPECT_NE(timed.find("Req\nwait 2500\nsend"), std::string::npos) << timed;
    EXPECT_NE(timed.find("wait 60000\n"), std::string::npos) << timed;
}

TEST(DeviceLog, Expectations) {
    std::string expect = sim::ConvertLog(sim::ReadDeviceLog(kLog), "dev.log", false).expectations;
    for (const char *want :
         {"to_platform command=18830 response=1 \"body~<Response><Result>0</Result><Time>\" "
          "\"body~</Time></Response>\"\n",
          "command=18864 response=1 format=empty\n",
          "\"body~{\" \"body~\t\\\"subserial\\\":\t\\\"DS1\\\"\" \"body~}\"\n"}) {
        EXPECT_NE(expect.find(want), std::string::npos) << want << "\n--- in ---\n" << expect;
    }
    // an answer to a command left out is not expected; nor is the application's own request
    expect = sim::ConvertLog(sim::ReadDeviceLog("R:498d\ns:498e\ns:4c86\n"), "dev.log", false).expectations;
    EXPECT_NE(expect.find("not replayed (the answer to a command left out): to_platform command=18830"),
              std::string::npos)
        << expect;
    EXPECT_NE(expect.find("not replayed (the application's own request): to_platform command=19590"),
              std::string::npos)
        << expect;
}

std::string Sent(int command, const std::string &body, int line) {
    return "{\"kind\":\"to_platform\",\"line\":" + std::to_string(line) +
           ",\"command\":" + std::to_string(command) + ",\"body\":\"" + body + "\"}";
}

TEST(DeviceLog, Departure) {
    sim::DeviceLog log =
        sim::ReadDeviceLog("s:305e\n\n<R>1</R>\ns:305e\n\n<R>1</R>\nR:498d\nxml: <Request/>\n"
                           "s:498e\n\n<Result>0</Result>\nR:498d\nxml: <Request/>\ns:498e\n\n"
                           "<Result>0</Result>\n");
    struct Case {
        const char *name;
        std::vector<std::string> pc;
        int departs_at; // 0: none
    } cases[] = {
        {"alike, a report sent once",
         {Sent(12382, "<R>1</R>", 1), Sent(18830, "<Result>0</Result>", 2),
          Sent(18830, "<Result>0</Result>", 3)},
         0},
        {"the second answer changed",
         {Sent(12382, "<R>1</R>", 1), Sent(18830, "<Result>0</Result>", 2),
          Sent(18830, "<Result>4</Result>", 3)},
         14},
        {"a report missing", {Sent(18830, "<Result>0</Result>", 2), Sent(18830, "<Result>0</Result>", 3)}, 1},
    };
    for (const Case &c : cases) {
        sim::Departure d = sim::FindDeparture(log, "dev.log", c.pc);
        EXPECT_EQ(d.found, c.departs_at != 0) << c.name << "\n" << d.text;
        if (c.departs_at != 0) {
            EXPECT_NE(d.text.find("dev.log:" + std::to_string(c.departs_at) + "\n"), std::string::npos)
                << d.text;
        }
    }
    sim::Departure d = sim::FindDeparture(log, "dev.log", cases[1].pc);
    EXPECT_NE(
        d.text.find("    <Result>0</Result>\n  the PC run sent (scenario line 3):\n    <Result>4</Result>"),
        std::string::npos)
        << d.text;
}

} // namespace
