// The host SDK's XML cursor and the kernel's XML skeletons.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "markupstl.h"
#include "noltdev_sdk_kernel_struct.h"

namespace {

const char kDecl[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";

TEST(HostXml, SetDocAcceptsExactlyOneDocument) {
    struct Case {
        const char *text;
        bool parsed;
        std::string printed; // what GetDoc returns afterwards
    };
    const std::vector<Case> cases = {
        {"<a><b>1</b></a>", true, "<a><b>1</b></a>"},
        {"<?xml version=\"1.0\"?>\n<a>\n  <b/>\n</a>\n", true, "<?xml version=\"1.0\"?><a><b></b></a>"},
        {"<a x=\"1\">&amp;&lt;</a>", true, "<a x=\"1\">&amp;&lt;</a>"},
        {"{\"a\":1}", false, "{\"a\":1}"},
        {"{\"a\":\"<b/>\"}", false, "{\"a\":\"<b/>\"}"},
        {"", false, ""},
        {"<a/><b/>", false, "<a/><b/>"},
        {"<a/>tail", false, "<a/>tail"},
        {"<![CDATA[x]]><a/>", false, "<![CDATA[x]]><a/>"},
        {"<a/><?xml version=\"1.0\"?>", false, "<a/><?xml version=\"1.0\"?>"},
        {"<a><b></a>", false, "<a><b></a>"},
        {"<a>", false, "<a>"},
    };
    for (const Case &c : cases) {
        CMarkupSTL doc;
        EXPECT_EQ(c.parsed, doc.SetDoc(c.text)) << c.text;
        EXPECT_EQ(c.parsed, doc.IsWellFormed()) << c.text;
        EXPECT_EQ(c.printed, doc.GetDoc()) << c.text;
        EXPECT_EQ(c.parsed, doc.FindElem()) << c.text;
    }
    CMarkupSTL none;
    EXPECT_FALSE(none.SetDoc(nullptr));
    EXPECT_EQ("", none.GetDoc());
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

    doc.ResetPos();
    EXPECT_FALSE(doc.AddElem("second")); // one root element only
    for (const char *bad : {(const char *)nullptr, "", "1a", "a b", "a<b", "-x"}) {
        EXPECT_FALSE(doc.FindElem("r", true) && doc.IntoElem() && doc.AddElem(bad)) << (bad ? bad : "NULL");
        doc.ResetPos();
    }

    CMarkupSTL empty;
    EXPECT_TRUE(empty.AddElem("Root"));
    EXPECT_EQ("<Root></Root>", empty.GetDoc());
}

TEST(HostXml, AddElemOnRawTextStartsAFreshDocument) {
    CMarkupSTL doc;
    EXPECT_FALSE(doc.SetDoc("{\"k\":1}"));
    EXPECT_FALSE(doc.FindElem());
    EXPECT_EQ("", doc.GetData());
    EXPECT_TRUE(doc.AddElem("a", "1"));
    EXPECT_TRUE(doc.IsWellFormed());
    EXPECT_EQ("<a>1</a>", doc.GetDoc());
}

TEST(HostXml, AttributesAndData) {
    CMarkupSTL doc("<r><p>old</p><q><x/></q></r>");
    EXPECT_FALSE(doc.SetAttrib("k", "v")); // no main element
    EXPECT_FALSE(doc.SetData("v"));
    EXPECT_EQ("", doc.GetAttrib("k"));
    ASSERT_TRUE(doc.FindElem("r") && doc.IntoElem() && doc.FindElem("p"));
    struct Case {
        const char *name;
        const char *value;
        bool set;
        std::string read;
    };
    const std::vector<Case> attribs = {
        {"k", "v", true, "v"},    {"k", "w", true, "w"}, {"e", "<&>\"'", true, "<&>\"'"},
        {"n", nullptr, true, ""}, {"", "v", false, ""},  {"bad name", "v", false, ""},
    };
    for (const Case &c : attribs) {
        EXPECT_EQ(c.set, doc.SetAttrib(c.name, c.value)) << c.name;
        EXPECT_EQ(c.read, doc.GetAttrib(c.name)) << c.name;
    }
    EXPECT_TRUE(doc.SetAttrib("i", -744910845));
    EXPECT_EQ("-744910845", doc.GetAttrib("i"));
    EXPECT_EQ("", doc.GetAttrib(nullptr));
    EXPECT_EQ("", doc.GetAttrib("absent"));

    EXPECT_EQ("old", doc.GetData());
    EXPECT_TRUE(doc.SetData(-3));
    EXPECT_EQ("-3", doc.GetData());
    EXPECT_TRUE(doc.SetData("a<b"));
    EXPECT_TRUE(doc.FindElem("q"));
    EXPECT_FALSE(doc.SetData("x")); // holds elements, not text

    CMarkupSTL again(doc.GetDoc().c_str());
    ASSERT_TRUE(again.FindElem("r") && again.IntoElem() && again.FindElem("p"));
    EXPECT_EQ("a<b", again.GetData());
    EXPECT_EQ("<&>\"'", again.GetAttrib("e"));
}

TEST(HostXml, RequestSkeletonTakesChildrenInsideRequest) {
    CMarkupSTL doc("<old/>");
    ASSERT_EQ(0, noltdev_xml_init_req(doc));
    EXPECT_EQ("", doc.GetTagName());
    EXPECT_TRUE(doc.AddElem("DevSerial", "DS1"));
    EXPECT_TRUE(doc.AddElem("Authorization"));
    EXPECT_EQ(std::string(kDecl) +
                  "<Request><DevSerial>DS1</DevSerial><Authorization></Authorization></Request>",
              doc.GetDoc());
}

TEST(HostXml, ResponseSkeletonHoldsResult) {
    CMarkupSTL doc;
    ASSERT_EQ(0, noltdev_xml_init_rsp(doc));
    EXPECT_TRUE(doc.AddElem("Info")); // no main element: after the last child
    EXPECT_TRUE(doc.FindElem("Result", true));
    EXPECT_EQ("0", doc.GetData());
    EXPECT_TRUE(doc.SetData(3));
    EXPECT_EQ(std::string(kDecl) + "<Response><Result>3</Result><Info></Info></Response>", doc.GetDoc());

    CMarkupSTL fresh;
    ASSERT_EQ(0, noltdev_xml_init_rsp(fresh));
    EXPECT_TRUE(fresh.FindElem("Result")); // a plain search finds it
}

TEST(HostXml, LargeInputsDoNotCrash) {
    const int depth = 100000;
    std::string deep;
    for (int i = 0; i < depth; ++i) {
        deep += "<d>";
    }
    for (int i = 0; i < depth; ++i) {
        deep += "</d>";
    }
    CMarkupSTL nested;
    EXPECT_TRUE(nested.SetDoc(deep.c_str()));
    EXPECT_EQ(deep, nested.GetDoc());

    std::string big(1 << 20, 'v');
    CMarkupSTL doc("<a/>");
    ASSERT_TRUE(doc.FindElem("a"));
    EXPECT_TRUE(doc.SetAttrib("big", big.c_str()));
    CMarkupSTL again(doc.GetDoc().c_str());
    ASSERT_TRUE(again.FindElem("a"));
    EXPECT_EQ(big, again.GetAttrib("big"));

    std::string into = "prefix:";
    again.GetDocInto(into);
    EXPECT_EQ("prefix:" + doc.GetDoc(), into);
}

} // namespace
