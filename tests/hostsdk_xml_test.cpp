// The host SDK's XML cursor and the kernel's XML skeletons.
#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "markupstl.h"
#include "noltdev_sdk_kernel_struct.h"

namespace {

const char kDecl[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";

TEST(HostXml, SetDocAcceptsExactlyOneDocumentAndKeepsOtherTextRaw) {
    const std::vector<std::pair<const char *, std::string>> accepted = {
        {"<a><b>1</b></a>", "<a><b>1</b></a>"},
        {"<?xml version=\"1.0\"?>\n<a>\n  <b/>\n</a>\n", "<?xml version=\"1.0\"?><a><b></b></a>"},
        {"<a x=\"1\">&amp;&lt;</a>", "<a x=\"1\">&amp;&lt;</a>"},
    };
    for (const auto &c : accepted) {
        CMarkupSTL doc;
        EXPECT_TRUE(doc.SetDoc(c.first)) << c.first;
        EXPECT_EQ(c.second, doc.GetDoc());
    }
    for (const char *text : {"{\"a\":1}", "{\"a\":\"<b/>\"}", "", "<a/><b/>", "<a/>tail", "<![CDATA[x]]><a/>",
                             "<a/><?xml version=\"1.0\"?>", "<a><b></a>", "<a>"}) {
        CMarkupSTL doc("<old/>");
        EXPECT_FALSE(doc.SetDoc(text)) << text;
        EXPECT_FALSE(doc.IsWellFormed() || doc.FindElem()) << text;
        EXPECT_EQ(text, doc.GetDoc());
        EXPECT_TRUE(doc.AddElem("a", "1")); // a raw text gives way to a fresh document
        EXPECT_EQ("<a>1</a>", doc.GetDoc());
    }
}

// Each row breaks one well-formedness rule that a lenient parser lets through.
TEST(HostXml, SetDocRefusesWhatIsNotWellFormed) {
    const char *const refused[] = {"<a>x & y</a>",
                                   "<a>&nbsp;</a>",
                                   "<a x=\"1\" x=\"2\"/>",
                                   "<a x=\"<\"/>",
                                   "<a x=\"&\"/>",
                                   "<a>&amp</a>",
                                   "<a>&#0;</a>",
                                   "<a>&#xZZ;</a>",
                                   "<a>&#x110000;</a>",
                                   "<a>&#;</a>",
                                   "<a></b>",
                                   "<a><b></a></b>",
                                   "<1a/>",
                                   "<-a/>",
                                   "<a -b=\"1\"/>",
                                   "<a x=1/>",
                                   "<a x></a>",
                                   "<a x=\"1\"y=\"2\"/>",
                                   "<a x='1\"/>",
                                   "<a ></ a>",
                                   "<a>]]></a>",
                                   "<a><![CDATA[x]></a>",
                                   "<a><!-- a -- b --></a>",
                                   "<a><!-- x ---></a>",
                                   "<a>\x01</a>",
                                   "<a/>\x01",
                                   "<a>\xff</a>",
                                   "<a>\xc3\x28</a>",
                                   "<a>\xc0\xbc</a>",
                                   " <?xml version=\"1.0\"?><a/>",
                                   "<?xml version=\"1.0\"?><?xml version=\"1.0\"?><a/>",
                                   "<a><?xml version=\"1.0\"?></a>",
                                   "<?xml encoding=\"UTF-8\"?><a/>",
                                   "<?XML version=\"1.0\"?><a/>",
                                   "<a/><!DOCTYPE a>",
                                   "<!DOCTYPE a [<!ENTITY nbsp \"x\">]><a>&nbsp;</a>",
                                   "x<a/>",
                                   "<a/><b/>"};
    for (const char *text : refused) {
        CMarkupSTL doc;
        EXPECT_FALSE(doc.SetDoc(text)) << text;
        EXPECT_EQ(text, doc.GetDoc());
    }
    const char *const accepted[] = {"<a>&#65;&#x41;&lt;&gt;&amp;&apos;&quot;</a>",
                                    "<?xml version='1.0' standalone='yes'?><a/>",
                                    "\xEF\xBB\xBF<?xml version=\"1.0\"?><a/>",
                                    "<!DOCTYPE a SYSTEM \"x>y\"><a/>",
                                    "<a b:c=\"1\" d.e-f='&lt;'></a >",
                                    "<a>\xc3\xa9\xe4\xb8\xad\xf0\x9f\x98\x80</a>",
                                    "<?pi x?><a><!-- - --><![CDATA[<&]]></a>"};
    for (const char *text : accepted) {
        CMarkupSTL doc;
        EXPECT_TRUE(doc.SetDoc(text)) << text;
    }
}

TEST(HostXml, FindElemRestartsOrContinues) {
    CMarkupSTL doc("<r><a>1</a><b>2</b><a>3</a><c>4</c></r>");
    ASSERT_TRUE(doc.FindElem("r"));
    ASSERT_TRUE(doc.IntoElem());
    struct Step {
        const char *name;
        bool restart;
        bool found;
        const char *data; // the main element's data afterwards
    };
    const std::vector<Step> steps = {
        {"a", false, true, "1"},  {"a", false, true, "3"}, {"a", false, false, "3"},
        {"b", false, false, "3"}, {"b", true, true, "2"},  {nullptr, false, true, "3"},
        {"", false, true, "4"},   {"", false, false, "4"}, {"a", true, true, "1"},
        {"zz", true, false, "1"},
    };
    for (size_t i = 0; i < steps.size(); ++i) {
        EXPECT_EQ(steps[i].found, doc.FindElem(steps[i].name, steps[i].restart)) << "step " << i;
        EXPECT_EQ(steps[i].data, doc.GetData()) << "step " << i;
    }
}

TEST(HostXml, IntoAndOutOfElemMoveBetweenLevels) {
    CMarkupSTL doc("<r><a><x>1</x></a><b/></r>");
    EXPECT_FALSE(doc.IntoElem());  // no main element yet
    EXPECT_FALSE(doc.OutOfElem()); // already at the document level
    ASSERT_TRUE(doc.FindElem("r") && doc.IntoElem() && doc.FindElem("a") && doc.IntoElem());
    EXPECT_EQ("", doc.GetTagName()); // nothing below until a search
    EXPECT_TRUE(doc.FindElem("x"));
    EXPECT_TRUE(doc.OutOfElem());
    EXPECT_EQ("a", doc.GetTagName()); // the element left is main again
    EXPECT_TRUE(doc.FindElem("b"));   // and searches continue after it
    EXPECT_TRUE(doc.OutOfElem());
    EXPECT_EQ("r", doc.GetTagName());
    doc.ResetPos();
    EXPECT_EQ("", doc.GetTagName());
    EXPECT_TRUE(doc.FindElem("r"));
}

TEST(HostXml, AddElemLandsAfterMainOrAtTheEnd) {
    CMarkupSTL doc("<r><a/><b/></r>");
    ASSERT_TRUE(doc.FindElem("r") && doc.IntoElem());
    EXPECT_TRUE(doc.AddElem("end", "1")); // no main element: end of level
    EXPECT_TRUE(doc.FindElem("a", true));
    EXPECT_TRUE(doc.AddElem("afterA", 7)); // after main, and becomes main
    EXPECT_TRUE(doc.AddElem("next"));
    EXPECT_EQ("next", doc.GetTagName());
    EXPECT_EQ("<r><a></a><afterA>7</afterA><next></next><b></b><end>1</end></r>", doc.GetDoc());

    for (const char *bad : {(const char *)nullptr, "", "1a", "a b", "a<b"}) {
        EXPECT_FALSE(doc.AddElem(bad)) << (bad ? bad : "NULL");
    }
    doc.ResetPos();
    EXPECT_TRUE(doc.AddElem("UserDefine")); // beside the root, at the end of the document level
    EXPECT_EQ("</end></r><UserDefine></UserDefine>", doc.GetDoc().substr(doc.GetDoc().size() - 35));

    CMarkupSTL empty;
    EXPECT_TRUE(empty.AddElem("Root"));
    EXPECT_EQ("<Root></Root>", empty.GetDoc());
}

TEST(HostXml, AttributesAndDataOfTheMainElement) {
    CMarkupSTL doc("<r><p>old</p><q><x/></q></r>");
    EXPECT_FALSE(doc.SetAttrib("k", "v")); // no main element
    EXPECT_FALSE(doc.SetData("v"));
    EXPECT_EQ("", doc.GetAttrib("k"));
    ASSERT_TRUE(doc.FindElem("r") && doc.IntoElem() && doc.FindElem("p"));
    EXPECT_EQ("old", doc.GetData());
    EXPECT_TRUE(doc.SetAttrib("k", "v") && doc.SetAttrib("k", "<&>\"'") && doc.SetAttrib("n", nullptr));
    EXPECT_TRUE(doc.SetAttrib("i", -744910845) && doc.SetData(-3));
    EXPECT_FALSE(doc.SetAttrib("bad name", "v"));
    EXPECT_EQ("", doc.GetAttrib("absent"));
    EXPECT_TRUE(doc.FindElem("q"));
    EXPECT_FALSE(doc.SetData("x")); // holds elements, not text

    CMarkupSTL again(doc.GetDoc().c_str()); // what was written survives printing
    ASSERT_TRUE(again.FindElem("r") && again.IntoElem() && again.FindElem("p"));
    EXPECT_EQ("-3", again.GetData());
    EXPECT_EQ("<&>\"'", again.GetAttrib("k"));
    EXPECT_EQ("-744910845", again.GetAttrib("i"));
}

TEST(HostXml, SkeletonsPlaceTheCursorInsideTheRoot) {
    CMarkupSTL req("<old/>");
    ASSERT_EQ(0, noltdev_xml_init_req(req));
    EXPECT_EQ("", req.GetTagName());
    EXPECT_TRUE(req.AddElem("DevSerial", "DS1") && req.AddElem("Authorization"));
    EXPECT_EQ(std::string(kDecl) +
                  "<Request><DevSerial>DS1</DevSerial><Authorization></Authorization></Request>",
              req.GetDoc());

    CMarkupSTL rsp;
    ASSERT_EQ(0, noltdev_xml_init_rsp(rsp));
    EXPECT_TRUE(rsp.AddElem("Info")); // no main element: after the last child
    EXPECT_FALSE(rsp.FindElem("Result"));
    EXPECT_TRUE(rsp.FindElem("Result", true));
    EXPECT_EQ("0", rsp.GetData());
    EXPECT_EQ(std::string(kDecl) + "<Response><Result>0</Result><Info></Info></Response>", rsp.GetDoc());
    ASSERT_EQ(0, noltdev_xml_init_rsp(rsp));
    EXPECT_TRUE(rsp.FindElem("Result")); // a plain search from the skeleton finds it
}

TEST(HostXml, LargeInputsDoNotCrash) {
    std::string open, close;
    for (int i = 0; i < 100000; ++i) {
        open += "<d>";
        close += "</d>";
    }
    CMarkupSTL nested((open + close).c_str());
    EXPECT_EQ(open + close, nested.GetDoc());

    std::string big(1 << 20, 'v');
    CMarkupSTL doc("<a/>");
    ASSERT_TRUE(doc.FindElem("a"));
    EXPECT_TRUE(doc.SetAttrib("big", big.c_str()));
    CMarkupSTL again(doc.GetDoc().c_str());
    ASSERT_TRUE(again.FindElem("a"));
    EXPECT_EQ(big, again.GetAttrib("big"));
}

TEST(HostXml, IntegersPrintAsPrintfPrintsThem) {
    for (int value : {0, 7, -1, 10, -10, 1000000, INT_MAX, INT_MIN, -744910845}) {
        char expected[16];
        std::snprintf(expected, sizeof expected, "%d", value);
        CMarkupSTL doc;
        ASSERT_TRUE(doc.AddElem("e", value) && doc.SetAttrib("a", value));
        EXPECT_EQ(std::string("<e a=\"") + expected + "\">" + expected + "</e>", doc.GetDoc());
    }
}

// Cursor states are reused on a thread: a new cursor starts empty whatever the one before
// it held, on the main thread and on a short-lived one.
TEST(HostXml, NewCursorStartsEmptyAfterAnyEarlierCursor) {
    auto check = [] {
        for (const char *before : {"{\"json\":1}", "<a><b>1</b></a>", "", "<a>"}) {
            {
                CMarkupSTL earlier(before);
                earlier.AddElem("Added", "x");
            }
            CMarkupSTL doc;
            EXPECT_EQ("", doc.GetDoc()) << before;
            EXPECT_FALSE(doc.FindElem()) << before;
            EXPECT_TRUE(doc.SetDoc("<r/>")) << before;
            EXPECT_EQ("<r></r>", doc.GetDoc()) << before;
        }
    };
    check();
    std::thread worker(check);
    worker.join();
}

} // namespace
