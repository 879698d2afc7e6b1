// Platform commands: for a representative body of each routed command, injection to
// answer sent (or to delivery, for the routes that send no answer), against the floor of
// parsing the same body and printing an answer of the same size.
#include <benchmark/benchmark.h>

#include <condition_variable>
#include <mutex>
#include <string>

#include <cjson/cJSON.h>
#include <pugixml.hpp>

#include "bench_app.h"
#include "noltdev_host.h"

namespace {

const char *const kReq = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><Request>";
const char *const kEnd = "</Request>";

struct Command {
    const char *name;
    int id;
    std::string body;
    bool json;
};

const Command kCommands[] = {
    {"SwitchEnable", 18699, std::string(kReq) + "<Switch Type=\"614\" Enable=\"1\" Channel=\"2\"/>" + kEnd,
     false},
    {"DevPlan", 18731,
     std::string(kReq) +
         "<Enable>1</Enable><Actor Channel=\"0\" PlanType=\"17\"/><Date Weekday=\"1\"><Plan B=\"07:30\" "
         "E=\"08:00\" EventArg=\"mode:3\"/><Plan B=\"12:00\" E=\"13:00\" EventArg=\"mode:1\"/></Date><Date "
         "Weekday=\"2\"><Plan B=\"07:30\" E=\"08:00\" EventArg=\"mode:3\"/></Date>" +
         kEnd,
     false},
    {"FlowCountInfo", 18749,
     std::string(kReq) +
         "<Position>90</Position><Line X1=\"0.5\" Y1=\"0.1\" X2=\"0.9\" Y2=\"0.1\"/><Direction X1=\"0.5\" "
         "Y1=\"0.5\" X2=\"0.5\" Y2=\"0.9\"/><Interval>5</Interval>" +
         kEnd,
     false},
    {"KeyValue", 18829,
     std::string(kReq) +
         "<Type>device_bell</Type><Value>{\"Type\":1,\"CustomRingIndex\":2,\"Volume\":60}</Value>" + kEnd,
     false},
    {"CustomVoice", 18843,
     std::string(kReq) +
         "<Info Index=\"3\" Type=\"1\" Name=\"hello\" Url=\"http://voices.invalid/v.mp3\" "
         "CustomVoice=\"1\"/>" +
         kEnd,
     false},
    {"Wake", 18863, "{\"subserial\":\"CH0000000001\"}", true},
    {"DelaySleep", 19588, std::string(kReq) + "<Info Channel=\"1\" Type=\"2\"/>" + kEnd, false},
    {"ProwlDriveOut", 19606, "{\"operType\":2,\"channel\":3,\"videoUrl\":[\"http://a.invalid/1\"]}", true},
    {"LinkageMode", 19917,
     std::string(kReq) +
         "<Enable>1</Enable><Time>30</Time><DevSerial>DB0000000001</DevSerial><Pwd>ABCDEF</Pwd>" + kEnd,
     false},
    {"MappedPortAnswer", 10380,
     "<?xml version=\"1.0\" encoding=\"UTF-8\"?><Response><Result>0</Result><DevInfo><SubSeral>DS1</SubSeral>"
     "<Domain>d.example</Domain><NatIP>1.2.3.4</NatIP><LocalIP>10.0.0.2</LocalIP><Port Type=\"http\" "
     "NatPort=\"8080\" LocalPort=\"80\"/></DevInfo></Response>",
     false},
    {"UnbindAnswer", 19591, "{\"Result\":0}", true},
};

std::mutex g_mu;
std::condition_variable g_cv;

// Injection to answer sent; the custom-voice answer comes from its worker thread.
void BM_Command(benchmark::State &state, const Command *cmd) {
    special_bench::Start();
    for (auto _ : state) {
        size_t before = special_bench::SentBytes();
        noltdev_host_inject(3999, cmd->id, 7, cmd->body.data(), static_cast<uint32_t>(cmd->body.size()));
        if (cmd->id == 18843) {
            std::unique_lock<std::mutex> lock(g_mu);
            while (special_bench::SentBytes() == before) {
                g_cv.wait_for(lock, std::chrono::microseconds(20));
            }
        }
    }
    state.counters["answer_bytes"] = static_cast<double>(special_bench::LastSent().size());
}

// Parsing the same body and printing an answer of the same size.
void BM_Floor(benchmark::State &state, const Command *cmd) {
    special_bench::Start();
    noltdev_host_inject(3999, cmd->id, 7, cmd->body.data(), static_cast<uint32_t>(cmd->body.size()));
    std::string answer_text = special_bench::LastSent();
    pugi::xml_document answer;
    bool answer_xml = answer.load_string(answer_text.c_str());
    for (auto _ : state) {
        if (cmd->json) {
            cJSON *root = cJSON_Parse(cmd->body.c_str());
            benchmark::DoNotOptimize(root);
            cJSON_Delete(root);
        } else {
            pugi::xml_document doc;
            benchmark::DoNotOptimize(doc.load_buffer(cmd->body.data(), cmd->body.size()));
        }
        std::string out;
        if (answer_xml) {
            struct Writer : pugi::xml_writer {
                std::string *s;
                void write(const void *data, size_t size) override {
                    s->append(static_cast<const char *>(data), size);
                }
            } writer;
            writer.s = &out;
            answer.save(writer, "", pugi::format_raw);
        } else {
            out = answer_text;
        }
        benchmark::DoNotOptimize(out.data());
    }
}

int Register() {
    for (const Command &c : kCommands) {
        benchmark::RegisterBenchmark((std::string("BM_Command/") + c.name).c_str(), BM_Command, &c);
        benchmark::RegisterBenchmark((std::string("BM_Floor/") + c.name).c_str(), BM_Floor, &c);
    }
    return 0;
}
const int kRegistered = Register();

} // namespace
