#include "util/xml/Element.h"

#include <gtest/gtest.h>

#include "support/TempFolder.h"
#include "util/AtomicFile.h"
#include "util/xml/Tag.h"
#include "util/xml/TagWithData.h"
#include "util/xml/Text.h"

namespace orv::util::xml {
namespace {

Element comment(const std::string& content) {
  Element element;
  element.kind = kComment;
  element.name = content;
  return element;
}

Element fromText(std::string_view text) {
  Element element;
  EXPECT_EQ(kReadOk, element.loadText(text)) << text;
  return element;
}

/// A tag "t" with attribute "v" of this value.
Tag valued(const std::string& value) {
  Tag tag("t");
  tag.setAttribute("v", value);
  return tag;
}

Element nested(int levels) {
  Element deep = Tag("a");
  for (int i = 1; i < levels; ++i) {
    Tag outer("a");
    outer.emplaceChild(std::move(deep));
    deep = std::move(outer);
  }
  return deep;
}

Tag exampleProfile() {
  Tag root("configprofile");
  root.setAttribute("version", "2.0");
  root.addChild(comment("by hand"));
  Element& spinner = root.addChild(Tag("spinner"));
  spinner.setAttribute("id", "101");
  spinner.setText("AAAAAAAANEA=");
  Element& group = root.addChild(Tag("group"));
  group.addChild(valued("say \"x\""));
  group.addChild(valued("it's \"x\""));
  group.addChild(valued("it's <a>\n&\x80"));
  return root;
}

constexpr char kExampleText[] =
    "<configprofile version=\"2.0\">\n"
    "\t<!-- by hand-- >\n"
    "\t<spinner id=\"101\">AAAAAAAANEA=</spinner>\n"
    "\t<group>\n"
    "\t\t<t v='say \"x\"'/>\n"
    "\t\t<t v=\"it's &#34;x&#34;\"/>\n"
    "\t\t<t v=\"it's &#60;a&#62;&#10;&#38;&#128;\"/>\n"
    "\t</group>\n"
    "</configprofile>\n";

TEST(Element, WritesTheFormByteForByteAndReadsItBack) {
  const Tag root = exampleProfile();
  EXPECT_EQ(kExampleText, root.toText());
  EXPECT_EQ(root, fromText(root.toText("", "")));
  EXPECT_EQ(root,
            fromText("\xEF\xBB\xBF<?xml version=\"1.0\"?>\r\n" + root.toText("    ", "\r\n")));
  Tag mixed("p");
  mixed.addChild(Text("a<b"));
  mixed.addChild(Tag("c")).addChild(Tag("d"));
  mixed.addChild(Text("x>y\t"));
  EXPECT_EQ("<p>a&#60;b<c><d/></c>x>y&#9;</p>\n", mixed.toText());
  EXPECT_EQ(mixed, fromText(mixed.toText()));
  mixed.kind = 3;
  EXPECT_EQ("", mixed.toText());
  const double twenty = 20.0;
  EXPECT_EQ("<v>AAAAAAAANEA=</v>\n", TagWithData("v", &twenty, sizeof twenty).toText());
}

TEST(Element, KeepsEveryByteOfValuesTextsAndComments) {
  std::string all;
  for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
  for (const std::string& content :
       {all, std::string("  two blanks in front, one behind "), std::string("'"), std::string("\""),
        std::string("'\"\"'"), std::string("&#65;"), std::string("--"), std::string("-- ")}) {
    Tag tag = valued(content);
    tag.addChild(comment(content));
    tag.addChild(Text(content));
    EXPECT_EQ(tag, fromText(tag.toText())) << content;
  }
}

TEST(Element, ReadsWhatOthersWrite) {
  const Element root = fromText(
      "<?xml version=\"1.0\" encoding=\"x\"?><!DOCTYPE r><!-- top --> < r  a='1'b=\"&#x41;&#66\" "
      ">\n"
      "<!--plain--> one &amp; &#300;<!----><?skip?> two <e /></r >");
  EXPECT_EQ("r 1 AB", root.name + " " + root.attribute("a") + " " + root.attribute("b"));
  // Only numeric references of bytes are turned back; blanks before a text are skipped.
  EXPECT_EQ("one &amp; &#300;two ", root.text());
  ASSERT_EQ(3u, root.children.size());
  EXPECT_EQ(comment("plain"), *root.children[0]);
  EXPECT_EQ(Tag("e"), *root.children[2]);
  EXPECT_EQ("x", fromText("<a b=\"1\" ? c=2 ><x/></a>").child("x").name) << "a ? ends a mark";
}

TEST(Element, RefusesDamageWithItsCodeAndKeepsNoTree) {
  struct Row {
    int code;
    const char *text, *problem;  ///< how the message begins
  };
  for (const auto& [code, text, problem] : std::initializer_list<Row>{
           {kNoRoot, "", "line 1, column 1: it holds no tag"},
           {kNoRoot, "<!-- only -->", "line 1, column 14: "},
           {kOutsideRoot, "text", "line 1, column 1: text or a second tag stands beside"},
           {kOutsideRoot, "<a/><b/>", "line 1, column 5: text or a second tag"},
           {kOutsideRoot, "<a/>\n\n b", "line 3, column 2: "},
           {kWrongClosing, "</a>", "line 1, column 1: a closing tag does not match"},
           {kWrongClosing, "<r>\n<a>\n</b>", "line 3, column 1: "},
           {kMalformed, "<a", "line 1, column 1: the tag is not closed"},
           {kMalformed, "<r>\n <a><b></b>", "line 2, column 2: the tag is not closed"},
           {kMalformed, "<a></a b=\"1\">", "line 1, column 8: a closing tag holds more"},
           {kMalformed, "<a b/>", "line 1, column 4: the attribute is broken"},
           {kMalformed, "<a b =\"1\"/>", "line 1, column 4: the attribute"},
           {kMalformed, "<a b= \"1\"/>", "line 1, column 4: the attribute"},
           {kMalformed, "<a b=1/>", "line 1, column 4: the attribute"},
           {kMalformed, "<a b=\"1'/>", "line 1, column 4: the attribute"},
           {kMalformed, "<a b=\"x>y\"/>", "line 1, column 4: the attribute"},
           {kMalformed, "\xEF\xBB\xBF<r>\r\n <\xC3\xA9 a='1' b=2/>", "line 2, column 11: the attr"},
           {kBadName, "<></>", "line 1, column 1: a tag has no name"},
           {kBadName, "<a// ></a//>", "line 1, column 1: "},
           {kBadName, "< !a/>", "line 1, column 1: "}}) {
    Element element = valued("old");
    std::string said;
    EXPECT_EQ(code, element.loadText(text, &said)) << text;
    EXPECT_EQ(0u, said.rfind(problem, 0)) << text << ": " << said;
    EXPECT_TRUE(element.isEmpty()) << text;
    EXPECT_STRNE(errorText(99), errorText(code));
  }
  const std::string whole = std::string("<?xml version=\"1.0\"?>\n") + kExampleText;
  // The last mark may end with the text in place of its ">".
  for (std::size_t size = 0; size + 2 < whole.size(); ++size) {
    Element element;
    EXPECT_NE(kReadOk, element.loadText(whole.substr(0, size))) << size;
    EXPECT_TRUE(element.isEmpty());
  }
}

TEST(Element, TakesDeepTreesWithoutRecursion) {
  const Element deep = nested(300000), copy(deep);
  EXPECT_TRUE(copy == deep);
  Element read;
  EXPECT_EQ(kTooDeep, read.loadText(deep.toText("", "")));
  EXPECT_EQ(kTooDeep, read.loadText(nested(kMaxReadDepth + 1).toText()));
  EXPECT_EQ(kReadOk, read.loadText(nested(kMaxReadDepth).toText()));
}

TEST(Element, CopiesDeeplyAlsoFromItsOwnParts) {
  Tag root = exampleProfile();
  Element copy = root;
  copy.children[2]->children[0]->setAttribute("v", "changed");
  EXPECT_EQ(exampleProfile(), root);
  EXPECT_NE(copy, root);
  Tag tag("t");
  static_cast<Element&>(tag) = comment("c");  // the kind comes along, whatever the class
  EXPECT_EQ(comment("c"), tag);
  Tag a("t"), b("t");
  a.attributes = {{"x", "1"}, {"y", "2"}};
  b.attributes = {{"y", "2"}, {"x", "1"}};
  EXPECT_NE(a, b) << "attributes have an order";

  root = *root.children[2];
  EXPECT_EQ("group", root.name);
  root.addChild(root);
  Element& self = root;
  root = self;
  EXPECT_EQ(4u, root.children.size());
  root = std::move(*root.children[3]);
  EXPECT_EQ(3u, root.children.size());
}

TEST(Element, AddsRemovesAndFindsChildren) {
  Tag root("r");
  EXPECT_EQ(&root, &root.addChild(Element())) << "nothing is not added";
  EXPECT_EQ(&root, &root.emplaceChild(Text("")));
  EXPECT_FALSE(root.removeChild(Tag("x")));
  root.addChild(Text("x"));
  root.addChild(Tag("x"));
  root.addChild(valued("1"));
  root.addChild(Tag("x")).setAttribute("n", "2");
  root.addChild(Tag("x"));
  EXPECT_EQ("2", root.child("x", 1).attribute("n")) << "a text has no name";
  EXPECT_EQ(&Element::empty(), &root.child("x", 3));
  EXPECT_EQ(&Element::empty(), &root.child("x", -1));
  EXPECT_EQ(&Element::empty(), &root.child("absent").child("deeper", 4));
  EXPECT_TRUE(root.removeChild(Tag("x"))) << "of two equal ones the first goes";
  EXPECT_EQ("2", root.child("x", 0).attribute("n"));
  EXPECT_EQ(4u, root.children.size());
  EXPECT_TRUE(root.removeChild(*root.children[0]));
  EXPECT_EQ("", root.text());
  root.addChild(Text("a"));
  root.addChild(Text("b"));
  root.setText(root.children.back()->name);
  EXPECT_EQ("b", root.text());
  EXPECT_EQ("new", root.setName("new"));
}

TEST(Element, SavesAndLoadsFiles) {
  const tests::TempFolder own;
  const std::string folder = own.path;
  const std::string path = folder + "/profile.xml";
  ASSERT_TRUE(exampleProfile().save(path));
  std::string bytes, error;
  ASSERT_TRUE(readFile(path, bytes));
  EXPECT_EQ(std::string("<?xml version=\"1.0\"?>\n") + kExampleText, bytes);
  Element back;
  EXPECT_EQ(kReadOk, back.load(path));
  EXPECT_EQ(exampleProfile(), back);
  ASSERT_TRUE(writeFile(folder + "/bad.xml", "<a>\n</b>"));
  EXPECT_EQ(kWrongClosing, back.load(folder + "/bad.xml", &error));
  EXPECT_EQ(0u, error.find(folder + "/bad.xml: line 2, column 1: a closing tag")) << error;
  EXPECT_EQ(kCannotRead, back.load(folder + "/absent.xml", &error));
  EXPECT_EQ(0u, error.find(folder + "/absent.xml: ")) << error;
  EXPECT_EQ(kCannotRead, back.load(folder)) << "a folder is no document";
  EXPECT_TRUE(back.isEmpty());
  EXPECT_FALSE(back.save(folder + "/absent/profile.xml", &error));
  EXPECT_NE(std::string::npos, error.find("absent/profile.xml")) << error;
  // What would not be read back leaves the file as it was.
  Tag key("t");
  key.setAttribute("a b", "1");
  EXPECT_TRUE(nested(kMaxReadDepth).save(path) && exampleProfile().save(path));
  std::vector<Element> refused = {nested(kMaxReadDepth + 1), key, comment("c"), Text("x"),
                                  Element()};
  for (const char* name : {"", "a b", "a>", "/a", "a/", "!a", "?a"}) {
    refused.emplace_back(Tag("r")).addChild(valued("1")).setName(name);
    EXPECT_FALSE(refused.back().save(path, &error)) << name;
    EXPECT_NE(std::string::npos, error.find("\"" + std::string(name) + "\"")) << error;
  }
  for (const Element& tree : refused) {
    EXPECT_FALSE(tree.save(path, &error)) << tree.name;
    EXPECT_EQ(0u, error.find(path + ": it can't be written: ")) << error;
  }
  EXPECT_EQ(kReadOk, back.load(path));
  EXPECT_EQ(exampleProfile(), back);
}

}  // namespace
}  // namespace orv::util::xml
