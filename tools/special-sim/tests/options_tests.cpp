// Tests of the simulator's command line: what each option sets, and the problem named
// for each bad use.
#include <gtest/gtest.h>

#include <initializer_list>

#include "options.h"

namespace sim {
namespace {

// Parses the words as the arguments after the program's name.
std::string Parse(std::initializer_list<const char *> words, Options *out) {
    std::vector<std::string> storage = {"special-sim"};
    storage.insert(storage.end(), words.begin(), words.end());
    std::vector<char *> argv;
    for (std::string &w : storage) {
        argv.push_back(&w[0]);
    }
    return ParseOptions(static_cast<int>(argv.size()), argv.data(), out);
}

TEST(Options, EachOptionSetsItsField) {
    Options o;
    ASSERT_EQ(Parse({"--json", "--log-level", "4", "--runtime", "all", "--expect", "e.expect", "--app",
                     "lib.so", "--no-check", "--slow-ms", "0x20", "--record", "r.scn", "--junit", "j.xml",
                     "--suite", "dir", "s.scn"},
                    &o),
              "");
    EXPECT_TRUE(o.json);
    EXPECT_FALSE(o.qualify);
    EXPECT_FALSE(o.help);
    EXPECT_EQ(o.run.log_level, 4);
    EXPECT_EQ(o.run.runtime, RuntimeShow::All);
    EXPECT_EQ(o.expect_file, "e.expect");
    EXPECT_EQ(o.run.app, "lib.so");
    EXPECT_FALSE(o.run.check.check);
    EXPECT_EQ(o.run.check.slow_ms, 32);
    EXPECT_EQ(o.record_file, "r.scn");
    EXPECT_EQ(o.junit_file, "j.xml");
    EXPECT_EQ(o.qualify_options.suite_dir, "dir");
    EXPECT_EQ(o.scenario_file, "s.scn");
}

TEST(Options, DefaultsAndRuntimeChoices) {
    Options o;
    ASSERT_EQ(Parse({"--qualify"}, &o), "");
    EXPECT_TRUE(o.qualify);
    EXPECT_EQ(o.run.runtime, RuntimeShow::Changes);
    EXPECT_TRUE(o.run.check.check);
    EXPECT_EQ(o.run.check.slow_ms, 500);
    EXPECT_EQ(o.run.log_level, 0);
    struct Case {
        const char *word;
        RuntimeShow show;
    } cases[] = {{"all", RuntimeShow::All}, {"changes", RuntimeShow::Changes}, {"none", RuntimeShow::None}};
    for (const Case &c : cases) {
        Options r;
        EXPECT_EQ(Parse({"--runtime", c.word}, &r), "") << c.word;
        EXPECT_EQ(r.run.runtime, c.show) << c.word;
    }
}

TEST(Options, NamesTheProblemOfABadUse) {
    struct Case {
        std::initializer_list<const char *> words;
        const char *problem;
    } cases[] = {
        {{"--runtime", "sometimes"}, "--runtime takes all, changes or none"},
        {{"--runtime"}, "unexpected argument '--runtime'"},
        {{"--log-level", "high"}, "unexpected argument '--log-level'"},
        {{"--slow-ms"}, "unexpected argument '--slow-ms'"},
        {{"--app"}, "unexpected argument '--app'"},
        {{"--verbose"}, "unexpected argument '--verbose'"},
        {{"a.scn", "b.scn"}, "unexpected argument 'b.scn'"},
        {{"--bogus", "--help"}, "unexpected argument '--bogus'"}, // a problem before the help wins
    };
    for (const Case &c : cases) {
        Options o;
        EXPECT_EQ(Parse(c.words, &o), c.problem) << *c.words.begin();
    }
}

// The qualification's and the log replay's options, each alone, set their field and no
// other: two option tables were joined by hand once, which is what this guards.
TEST(Options, QualifyAndLogOptionsSetTheirFields) {
    struct Case {
        std::initializer_list<const char *> words;
        const char *name;
        bool (*holds)(const Options &);
    } cases[] = {
        {{"--row", "status,command kCenPlt2PuWakeReq"},
         "--row",
         [](const Options &o) { return o.qualify_options.only == "status,command kCenPlt2PuWakeReq"; }},
        {{"--require", "shadow"},
         "--require",
         [](const Options &o) { return o.qualify_options.require == "shadow"; }},
        {{"--require-all"}, "--require-all", [](const Options &o) { return o.qualify_options.require_all; }},
        {{"--row-timeout", "3"},
         "--row-timeout",
         [](const Options &o) { return o.qualify_options.row_timeout_s == 3; }},
        {{"--concurrency-s", "0"},
         "--concurrency-s",
         [](const Options &o) { return o.qualify_options.concurrency_s == 0; }},
        {{"--poll-ms", "20"}, "--poll-ms", [](const Options &o) { return o.run.poll_ms == 20; }},
        {{"--slow-worker-ms", "700"},
         "--slow-worker-ms",
         [](const Options &o) { return o.run.check.slow_worker_ms == 700; }},
        {{"--version"}, "--version", [](const Options &o) { return o.version; }},
        {{"--from-log", "cam.log"}, "--from-log", [](const Options &o) { return o.from_log == "cam.log"; }},
        {{"--out", "field"}, "--out", [](const Options &o) { return o.out_name == "field"; }},
        {{"--keep-timing"}, "--keep-timing", [](const Options &o) { return o.keep_timing; }},
        {{"--no-check"}, "--no-check", [](const Options &o) { return !o.run.check.check; }},
    };
    for (const Case &c : cases) {
        Options o;
        ASSERT_EQ(Parse(c.words, &o), "") << c.name;
        EXPECT_TRUE(c.holds(o)) << c.name;
        Options d;
        // every other case's field keeps its default
        for (const Case &other : cases) {
            if (&other != &c) {
                EXPECT_EQ(other.holds(o), other.holds(d)) << c.name << " touched " << other.name;
            }
        }
    }
}

TEST(Options, HelpStopsTheParsing) {
    for (const char *help : {"-h", "--help"}) {
        Options o;
        EXPECT_EQ(Parse({"--json", help, "--bogus"}, &o), "") << help;
        EXPECT_TRUE(o.help) << help;
        EXPECT_TRUE(o.json) << help;
    }
}

} // namespace
} // namespace sim
