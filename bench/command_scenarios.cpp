// Platform commands: for a representative body of each routed command, injection to
// answer sent (or to delivery, for the routes that send no answer), against the floor of
// parsing the same body and printing an answer of the same size.
#include <memory>
#include <string>

#include <cjson/cJSON.h>
#include <pugixml.hpp>

#include "bench_app.h"
#include "noltdev_host.h"
#include "scenario.h"

namespace special_bench {
namespace {

const char *const kReq = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><Request>";
const char *const kEnd = "</Request>";

struct Command {
    const char *name;
    int id;
    std::string body;
    bool json;
    bool worker; // answered from a worker thread
};

const Command kCommands[] = {
    {"SwitchEnable", 18699, std::string(kReq) + "<Switch Type=\"614\" Enable=\"1\" Channel=\"2\"/>" + kEnd,
     false, false},
    {"DevPlan", 18731,
     std::string(kReq) +
         "<Enable>1</Enable><Actor Channel=\"0\" PlanType=\"17\"/><Date Weekday=\"1\"><Plan B=\"07:30\" "
         "E=\"08:00\" EventArg=\"mode:3\"/><Plan B=\"12:00\" E=\"13:00\" EventArg=\"mode:1\"/></Date><Date "
         "Weekday=\"2\"><Plan B=\"07:30\" E=\"08:00\" EventArg=\"mode:3\"/></Date>" +
         kEnd,
     false, false},
    {"FlowCountInfo", 18749,
     std::string(kReq) +
         "<Position>90</Position><Line X1=\"0.5\" Y1=\"0.1\" X2=\"0.9\" Y2=\"0.1\"/><Direction X1=\"0.5\" "
         "Y1=\"0.5\" X2=\"0.5\" Y2=\"0.9\"/><Interval>5</Interval>" +
         kEnd,
     false, false},
    {"KeyValue", 18829,
     std::string(kReq) +
         "<Type>device_bell</Type><Value>{\"Type\":1,\"CustomRingIndex\":2,\"Volume\":60}</Value>" + kEnd,
     false, false},
    {"CustomVoice", 18843,
     std::string(kReq) +
         "<Info Index=\"3\" Type=\"1\" Name=\"hello\" Url=\"http://voices.invalid/v.mp3\" "
         "CustomVoice=\"1\"/>" +
         kEnd,
     false, true},
    {"Wake", 18863, "{\"subserial\":\"CH0000000001\"}", true, false},
    {"DelaySleep", 19588, std::string(kReq) + "<Info Channel=\"1\" Type=\"2\"/>" + kEnd, false, false},
    {"ProwlDriveOut", 19606, "{\"operType\":2,\"channel\":3,\"videoUrl\":[\"http://a.invalid/1\"]}", true,
     false},
    {"LinkageMode", 19917,
     std::string(kReq) +
         "<Enable>1</Enable><Time>30</Time><DevSerial>DB0000000001</DevSerial><Pwd>ABCDEF</Pwd>" + kEnd,
     false, false},
    {"MappedPortAnswer", 10380,
     "<?xml version=\"1.0\" encoding=\"UTF-8\"?><Response><Result>0</Result><DevInfo><SubSeral>DS1</SubSeral>"
     "<Domain>d.example</Domain><NatIP>1.2.3.4</NatIP><LocalIP>10.0.0.2</LocalIP><Port Type=\"http\" "
     "NatPort=\"8080\" LocalPort=\"80\"/></DevInfo></Response>",
     false, false},
    {"UnbindAnswer", 19591, "{\"Result\":0}", true, false},
};

void Inject(const Command &cmd) {
    uint64_t before = SentMessages();
    noltdev_host_inject(3999, cmd.id, 7, cmd.body.data(), static_cast<uint32_t>(cmd.body.size()));
    if (cmd.worker) {
        WaitSentMoreThan(before);
    }
}

class StringWriter : public pugi::xml_writer {
  public:
    std::string *out = nullptr;
    void write(const void *data, size_t size) override { out->append(static_cast<const char *>(data), size); }
};

// The answer the module sent for the command, kept parsed (or as text when it is not
// XML), printed again on each run as the cursor prints: no indentation, no declaration
// of its own, empty elements as two tags.
struct CommandFloor {
    const Command *cmd;
    bool answered = false;
    bool answer_xml = false;
    std::string answer_text;
    pugi::xml_document answer;
    std::string out;
    StringWriter writer;

    void Setup() {
        Start();
        uint64_t before = SentMessages();
        Inject(*cmd);
        answered = SentMessages() > before;
        answer_text = answered ? LastSent() : std::string();
        answer_xml = answered &&
                     answer.load_string(answer_text.c_str(), pugi::parse_default | pugi::parse_declaration);
        writer.out = &out;
    }

    void Run() {
        if (cmd->json) {
            cJSON_Delete(cJSON_Parse(cmd->body.c_str()));
        } else {
            pugi::xml_document doc;
            doc.load_buffer(cmd->body.data(), cmd->body.size());
        }
        out.clear();
        if (answer_xml) {
            answer.save(writer, "",
                        pugi::format_raw | pugi::format_no_declaration | pugi::format_no_empty_element_tags);
        } else {
            out = answer_text;
        }
    }
};

const int kAdded = [] {
    for (const Command &c : kCommands) {
        std::string name = c.name;
        AddScenario({"command/" + name, "command_floor/" + name, 2.0, [] { Start(); }, [&c] { Inject(c); }});
        auto floor = std::make_shared<CommandFloor>();
        floor->cmd = &c;
        AddScenario({"command_floor/" + name, "", 0, [floor] { floor->Setup(); }, [floor] { floor->Run(); }});
    }
    return 0;
}();

} // namespace
} // namespace special_bench
