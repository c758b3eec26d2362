#include "tests/util/XmlTestSupport.h"

namespace orvane::nimbrel::util::test {
namespace {

constexpr const char* XML_NS = "http://www.w3.org/XML/1998/namespace";

std::string valueOf(const Option<std::string>& option) {
  return option.c_str();  // "none" when there is none
}

TEST(XmlNode, TellsElementsTextsCommentsAndInstructionsApart) {
  const auto root = parseRoot("<a>x<b/><!--c--><?p d?></a>");
  const auto children = root->getChildren();
  ASSERT_EQ(children.size(), 4U);
  const int types[] = {4, 2, 8, 7};
  for (std::size_t i = 0; i < children.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(children[i]->getNodeType(), types[i]);
    EXPECT_EQ(valueOf(children[i]->getContent()), i == 0 ? "x" : "none");
    EXPECT_EQ(children[i]->getName(), i == 1 ? "b" : "");
    EXPECT_EQ(children[i]->getParent(), root);
    EXPECT_TRUE(children[i]->getChildren().empty());
    EXPECT_EQ(valueOf(children[i]->getAttribute("x")), "none");
  }
  EXPECT_EQ(root->getNodeType(), 2);
  EXPECT_EQ(root->getParent(), nullptr);
}

TEST(XmlNode, WalksElementsPastEverythingElse) {
  const auto root = parseRoot("<a> <!--c--><b/>x<?p?><c/> </a>");
  const auto b = root->getFirstElementChild();
  const auto c = b->getNextElementSibling();
  EXPECT_EQ(b->getName() + c->getName(), "bc");
  EXPECT_EQ(c->getNextElementSibling(), nullptr);
  EXPECT_EQ(b->getFirstElementChild(), nullptr);
}

TEST(XmlNode, FindsAttributesByLocalNameAndNamespace) {
  const auto root = parseRoot(
      "<a xmlns='d' xmlns:p='u' xmlns:q='u' x='1' p:x='2' e='' p:y='3' q:y='4' r:z='5'/>");
  // Without a namespace; the same attribute twice breaks a namespace rule: the first counts.
  expectRows("x => 1  e =>  y => none  X => none  r:z => 5  z => none  xmlns => none  => none",
             [&](const std::string& name) {
               const std::string value = valueOf(root->getAttribute(name.c_str(), nullptr));
               EXPECT_EQ(valueOf(root->getAttribute(name.c_str())), value);
               return value;
             });
  expectRows("u x => 2  d x => none  u p:x => none  u y => 3", [&](const std::string& name) {
    return valueOf(root->getAttribute(name.c_str() + 2, name.substr(0, 1).c_str()));
  });
  EXPECT_EQ(valueOf(root->getAttribute("x", "")), "none");
  EXPECT_EQ(valueOf(root->getAttribute(nullptr, "u")), "none");
  EXPECT_EQ(valueOf(root->getAttribute(nullptr, nullptr)), "none");
  EXPECT_EQ(valueOf(root->getAttribute(nullptr)), "none");
}

TEST(XmlNode, TakesTheNearestLanguageAndStopsAtAnEmptyOne) {
  const auto root =
      parseRoot("<a><b xml:lang='De-x'>t<c lang='no'><d xml:lang=''>t<e/></d></c></b><f/></a>");
  const auto b = root->getFirstElementChild();
  const auto c = b->getFirstElementChild();
  const auto d = c->getFirstElementChild();
  EXPECT_EQ(root->getXmlLang(), "");
  EXPECT_EQ(b->getXmlLang(), "De-x");
  EXPECT_EQ(b->getChildren().front()->getXmlLang(), "De-x");
  EXPECT_EQ(c->getXmlLang(), "De-x");
  EXPECT_EQ(valueOf(b->getAttribute("lang", XML_NS)), "De-x");
  EXPECT_EQ(d->getXmlLang(), "");
  EXPECT_EQ(d->getFirstElementChild()->getXmlLang(), "");
  EXPECT_EQ(b->getNextElementSibling()->getXmlLang(), "");
}

TEST(XmlNode, KnowsWhereItBegins) {
  const auto root = parseRoot(
      "<?xml version='1.0'?>\n<!DOCTYPE a [\n<!ENTITY e '\n\n<x/>'>]>\r\n"
      "<a\n  b='1\n2'\n>\n<c/>text\n<d\r\n/>&e;<e\n/></a>");
  EXPECT_EQ(root->getLineNumber(), 6U);
  const auto children = root->getChildren();
  const unsigned int lines[] = {9, 10, 10, 11, 12, 12, 12};
  ASSERT_EQ(children.size(), 7U);  // "\n", c, "text\n", d, the entity's line breaks, x, e
  for (std::size_t i = 0; i < children.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(children[i]->getLineNumber(), lines[i]);
  }
}

TEST(XmlNode, KnowsTheLineInWhichATextBegins) {
  const Row cases[] = {
      {"<a>\n<b\n></b\n> \nx</a>", "1 2 4"},  // behind an end tag
      {"<a><b/>\nx</a>", "1 1"},
      {"<a><!--\n-->x<?p\n?>y</a>", "2 2 3 3"},
      {"<a>\n<![CDATA[\n]]>\n<b/></a>", "1 4"},
  };
  expectRows(cases, [](const std::string& document) {
    std::string lines;
    for (const auto& child : parseRoot(document)->getChildren()) {
      lines += (lines.empty() ? "" : " ") + std::to_string(child->getLineNumber());
    }
    return lines;
  });
}

TEST(XmlNode, CountsLinesBeyondWhatLibxml2sTreeCan) {
  const auto root = parseRoot("<a>" + std::string(70000, '\n') + "<b/>" + std::string(70000, '\n') +
                              "<c\n\n/>t</a>");
  const auto b = root->getFirstElementChild();
  EXPECT_EQ(b->getLineNumber(), 70001U);
  EXPECT_EQ(b->getNextElementSibling()->getLineNumber(), 140001U);
  EXPECT_EQ(root->getChildren().back()->getLineNumber(), 140003U);
}

TEST(XmlNode, KeepsItsDocumentAlive) {
  const std::shared_ptr<XmlNode> b = parseRoot("<a><b>text</b></a>")->getFirstElementChild();
  EXPECT_EQ(b->getParent()->getFirstElementChild(), b);
  EXPECT_EQ(b->getNextElementSibling(), nullptr);
  EXPECT_EQ(b->firstChild()->share()->contentView(), "text");
}

}  // namespace
}  // namespace orvane::nimbrel::util::test
