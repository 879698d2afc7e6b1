// special-soak: the simulator's demo device under a seeded random mix of the demo
// scenario's steps (every routed command, status change, event, shadow value and
// application request), for a given time. Each cycle of a few thousand steps is one
// init/fini of the module. Fails on a lost answer, an unexpected level-1 log line or
// RSS growth beyond the bound; the last line sums the run up.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <malloc.h>

#include <cjson/cJSON.h>

#include "noltdev_host.h"
#include "runner.h"
#include "scenario.h"
#include "step_table.h"
#include "transcript.h"

namespace {

// What one cycle's transcript held.
struct Tally {
    long commands = 0;            // platform commands injected
    long answered = 0;            // of those, answered with their own seq
    std::set<long> lost;          // commands (ids) of the unanswered ones that must answer
    std::set<long> answering;     // command ids that were answered
    std::set<std::string> errors; // level-1 log lines
    bool init_ok = true;
};

std::string Text(const cJSON *o, const char *key) {
    const char *text = cJSON_GetStringValue(cJSON_GetObjectItem(o, key));
    return text != nullptr ? text : "";
}

// A log line's shape: its first line with every digit run as "#", so that lines that
// differ only in the values they carry count as one.
std::string Shape(const std::string &line) {
    std::string out;
    for (char c : line.substr(0, line.find('\n'))) {
        if (c < '0' || c > '9') {
            out += c;
        } else if (out.empty() || out.back() != '#') {
            out += '#';
        }
    }
    return out;
}

// Tallies the transcript's JSON Lines as they are written (nothing is kept but the
// unanswered commands), through a stdio stream of its own.
class Counter {
  public:
    Counter() {
        cookie_io_functions_t io = {nullptr, &Counter::Write, nullptr, nullptr};
        file_ = fopencookie(this, "w", io);
    }
    FILE *File() { return file_; }
    // Closes the stream and returns the tally.
    Tally Finish(const std::set<long> &must_answer) {
        std::fclose(file_);
        for (const auto &p : pending_) {
            if (must_answer.count(p.second) != 0) {
                tally_.lost.insert(p.second);
            }
        }
        return tally_;
    }

  private:
    static ssize_t Write(void *self, const char *buf, size_t size) {
        Counter *c = static_cast<Counter *>(self);
        for (size_t i = 0; i < size; ++i) {
            if (buf[i] != '\n') {
                c->partial_ += buf[i];
            } else {
                c->Line(c->partial_);
                c->partial_.clear();
            }
        }
        return static_cast<ssize_t>(size);
    }
    void Line(const std::string &line) {
        cJSON *o = cJSON_Parse(line.c_str());
        if (o == nullptr) {
            return;
        }
        std::string kind = Text(o, "kind");
        auto number = [o](const char *key) {
            return static_cast<long>(cJSON_GetNumberValue(cJSON_GetObjectItem(o, key)));
        };
        if (kind == "to_device") {
            ++tally_.commands;
            pending_[number("seq")] = number("command");
        } else if (kind == "to_platform" && number("response") == 1) {
            auto it = pending_.find(number("seq"));
            if (it != pending_.end()) {
                ++tally_.answered;
                tally_.answering.insert(it->second);
                pending_.erase(it);
            }
        } else if (kind == "log" && number("level") == 1) {
            tally_.errors.insert(Shape(Text(o, "text")));
        } else if (kind == "init" && number("result") != 0) {
            tally_.init_ok = false;
        }
        cJSON_Delete(o);
    }

    FILE *file_;
    std::string partial_;
    std::map<long, long> pending_; // seq -> command
    Tally tally_;
};

// Runs one cycle of steps as one scenario (one init/fini) and tallies it.
Tally RunCycle(const sim::Scenario &scenario, const std::set<long> &must_answer) {
    Counter counter;
    {
        sim::Transcript out(counter.File(), true, false);
        sim::RunOptions options;
        options.log_level = 1;
        options.runtime = sim::RuntimeShow::None;
        sim::RunScenario(scenario, "soak", out, options);
    }
    // the report-status service logs every unregistration for the tests; over a soak
    // that log would be the one thing that grows
    noltdev_host_report_clear_unregister_log();
    return counter.Finish(must_answer);
}

// Resident memory once the allocator has handed its free pages back, so that what is
// measured is what is live, not what the heap happens to keep.
long Rss() {
    malloc_trim(0);
    return noltdev_host_process_status("VmRSS");
}

// Whether the step is the scenario command of this word.
bool Is(const sim::Step &s, const char *word) {
    return s.row != nullptr && std::strcmp(s.row->name, word) == 0;
}

// The demo's steps the mix draws from: every step but those that only print, wait or
// put the device to sleep (a sleeping device drops commands by design).
std::vector<sim::Step> Pool(const sim::Scenario &demo) {
    std::vector<sim::Step> pool;
    for (const sim::Step &s : demo.steps) {
        if (!Is(s, "show") && !Is(s, "note") && !Is(s, "wait") && !Is(s, "sleep")) {
            pool.push_back(s);
        }
    }
    return pool;
}

// A status change with a fresh value: the demo's "set PATH N" with N drawn at random.
bool Revalue(sim::Step *step, std::mt19937 &rng) {
    std::istringstream in(step->text);
    std::string word, path, value;
    in >> word >> path >> value;
    if (word != "set" || value.empty() || value.find_first_not_of("-0123456789") != std::string::npos) {
        return false;
    }
    std::string text = "set " + path + " " + std::to_string(std::uniform_int_distribution<int>(0, 3)(rng));
    sim::Scenario one = sim::ParseScenario(text, "soak");
    if (!one.errors.empty() || one.steps.empty()) {
        return false;
    }
    *step = one.steps[0];
    return true;
}

// The run's settings, from the command line.
struct Options {
    int seconds = 0;
    unsigned seed = 1;
    int per_cycle = 3000;
    long rss_bound = 2048; // KiB of growth allowed between the warm-up and the end
    const char *demo = nullptr;
};

bool ParseOptions(int argc, char **argv, Options *o) {
    if (argc < 3) {
        std::fprintf(stderr,
                     "usage: special-soak SECONDS DEMO.scn [SEED [STEPS_PER_CYCLE [RSS_BOUND_KIB]]]\n");
        return false;
    }
    o->seconds = std::atoi(argv[1]);
    o->demo = argv[2];
    o->seed = argc > 3 ? static_cast<unsigned>(std::strtoul(argv[3], nullptr, 0)) : 1u;
    o->per_cycle = argc > 4 ? std::atoi(argv[4]) : 3000;
    o->rss_bound = argc > 5 ? std::atol(argv[5]) : 2048;
    return true;
}

bool LoadDemo(const char *path, sim::Scenario *demo) {
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    *demo = sim::ParseScenario(text.str(), path);
    if (!demo->errors.empty() || demo->steps.empty()) {
        std::fprintf(stderr, "soak: %s is not a good scenario\n", path);
        return false;
    }
    return true;
}

// The demo played once in order tells which commands answer and which level-1 lines its
// steps bring by design (without its pass-through answers: those are the application's,
// paired by hand).
Tally Calibrate(const sim::Scenario &demo) {
    sim::Scenario calibration;
    for (const sim::Step &s : demo.steps) {
        if (!Is(s, "call") || std::strcmp(s.call->name, "raw") != 0) {
            calibration.steps.push_back(s);
        }
    }
    return RunCycle(calibration, {});
}

// The soak's running totals and what it was told to expect.
struct Soak {
    Options options;
    std::set<long> must_answer;
    std::set<std::string> expected_errors;
    std::vector<sim::Step> pool;
    std::mt19937 rng;
    unsigned seq = 1;
    long steps = 0, answered = 0, lost = 0, cycles = 0;
    std::set<std::string> unexpected;
    long rss_start = 0, threads_start = 0;
};

// One cycle's random steps, each command with its own sequence number.
sim::Scenario MakeCycle(Soak *soak) {
    sim::Scenario cycle;
    for (int i = 0; i < soak->options.per_cycle; ++i) {
        sim::Step step =
            soak->pool[std::uniform_int_distribution<size_t>(0, soak->pool.size() - 1)(soak->rng)];
        if (Is(step, "set")) {
            Revalue(&step, soak->rng);
        }
        if (Is(step, "send") || Is(step, "post")) {
            step.seq = soak->seq++;
        }
        cycle.steps.push_back(step);
    }
    return cycle;
}

// Adds one cycle's tally to the totals and reports what it lost or did not expect.
void Account(Soak *soak, const Tally &t) {
    ++soak->cycles;
    soak->steps += soak->options.per_cycle;
    soak->answered += t.answered;
    soak->lost += static_cast<long>(t.lost.size());
    for (long id : t.lost) {
        std::fprintf(stderr, "soak: cycle %ld: command %ld lost its answer\n", soak->cycles, id);
    }
    for (const std::string &e : t.errors) {
        if (soak->expected_errors.count(e) == 0 && soak->unexpected.insert(e).second) {
            std::fprintf(stderr, "soak: cycle %ld: unexpected level-1 line: %s\n", soak->cycles, e.c_str());
        }
    }
    // RSS is taken once the allocator's per-thread arenas and the cached stacks of the
    // custom-voice workers have settled, after the first few cycles.
    const long warm_cycles = 5;
    if (soak->cycles == warm_cycles) {
        soak->rss_start = Rss();
    }
    if (soak->cycles % 20 == 0) {
        std::fprintf(stderr, "soak: %ld cycles, %ld steps, RSS %ld KiB\n", soak->cycles, soak->steps, Rss());
    }
}

// Prints the last line; 0 when nothing was lost, unexpected, grown or left running.
int Report(Soak *soak) {
    const long rss_end = Rss(), threads_end = noltdev_host_process_status("Threads");
    if (soak->rss_start == 0) {
        soak->rss_start = rss_end; // too short a run to judge the growth
    }
    std::printf(
        "soak: %ld steps, %ld commands answered, %ld lost, RSS start %ld KiB end %ld KiB, threads start %ld "
        "end %ld\n",
        soak->steps, soak->answered, soak->lost, soak->rss_start, rss_end, soak->threads_start, threads_end);
    const bool grew = rss_end - soak->rss_start > soak->options.rss_bound;
    if (grew) {
        std::fprintf(stderr, "soak: RSS grew by %ld KiB, more than the bound of %ld KiB\n",
                     rss_end - soak->rss_start, soak->options.rss_bound);
    }
    const bool failed =
        soak->lost != 0 || !soak->unexpected.empty() || grew || threads_end != soak->threads_start;
    return failed ? 1 : 0;
}

} // namespace

int main(int argc, char **argv) {
    Soak soak;
    sim::Scenario demo;
    if (!ParseOptions(argc, argv, &soak.options) || !LoadDemo(soak.options.demo, &demo)) {
        return 2;
    }
    Tally base = Calibrate(demo);
    if (!base.init_ok) {
        std::fprintf(stderr, "soak: the module did not start\n");
        return 1;
    }
    soak.must_answer = base.answering;
    soak.expected_errors = base.errors;
    soak.pool = Pool(demo);
    soak.rng.seed(soak.options.seed);
    soak.threads_start = noltdev_host_process_status("Threads");
    auto until = std::chrono::steady_clock::now() + std::chrono::seconds(soak.options.seconds);
    do {
        Tally t = RunCycle(MakeCycle(&soak), soak.must_answer);
        if (!t.init_ok) {
            std::fprintf(stderr, "soak: cycle %ld: the module did not start\n", soak.cycles);
            return 1;
        }
        Account(&soak, t);
    } while (std::chrono::steady_clock::now() < until);
    return Report(&soak);
}
