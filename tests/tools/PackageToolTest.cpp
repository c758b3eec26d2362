#include <gmock/gmock.h>
#include <zip.h>
#include <zlib.h>

#include "tests/tools/Tool.h"

namespace nimbrel_test {
namespace {

using testing::HasSubstr;

/// A number of so many bytes, as archives have them.
std::string number(std::uint64_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i, value >>= 8) {
    text += static_cast<char>(value & 0xFF);
  }
  return text;
}

std::string replaceAll(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
  return text;
}

struct Entry {
  std::string name;
  std::string content = {};
  int compression = ZIP_CM_DEFLATE;
  bool encrypted = false;
  std::string unicodeField = {};  // checksum of the name, then the name in UTF-8
};

/// The bytes of a ZIP archive with these entries.
std::string package(const std::vector<Entry>& entries) {
  const TemporaryFile file("");
  int code = 0;
  zip_t* const archive = zip_open(file.path().c_str(), ZIP_TRUNCATE, &code);
  EXPECT_NE(archive, nullptr);
  for (const Entry& entry : entries) {
    zip_source_t* const source =
        zip_source_buffer(archive, entry.content.data(), entry.content.size(), 0);
    const auto index =
        static_cast<zip_uint64_t>(zip_file_add(archive, entry.name.c_str(), source, 0));
    EXPECT_EQ(zip_set_file_compression(archive, index, entry.compression, 0), 0);
    if (!entry.unicodeField.empty()) {
      // The library keeps the number of this field for itself; it is replaced below.
      const std::string field = '\x01' + entry.unicodeField;
      EXPECT_EQ(zip_file_extra_field_set(archive, index, 0x7170, ZIP_EXTRA_FIELD_NEW,
                                         reinterpret_cast<const zip_uint8_t*>(field.data()),
                                         static_cast<zip_uint16_t>(field.size()),
                                         ZIP_FL_CENTRAL | ZIP_FL_LOCAL),
                0);
    }
    if (entry.encrypted) {
      EXPECT_EQ(zip_file_set_encryption(archive, index, ZIP_EM_AES_256, "secret"), 0);
    }
  }
  EXPECT_EQ(zip_close(archive), 0);
  return replaceAll(contentOf(file.path()), "\x70\x71", "\x75\x70");
}

/// Writes bytes behind a mark, so far behind the last one that there is.
std::string patched(std::string archive, const char* mark, std::size_t offset,
                    const std::string& bytes) {
  return archive.replace(archive.rfind(mark) + offset, bytes.size(), bytes);
}

/// The archive with the records for large ones, which say that it has so many entries.
std::string zip64(std::string archive, std::uint64_t entries, std::uint64_t directorySize = 0) {
  const std::size_t end = archive.rfind("PK\x05\x06");
  const std::size_t directory = archive.find("PK\x01\x02");
  const std::string record =
      "PK\x06\x06" + number(44, 8) + number(0, 12) + number(entries, 8) + number(entries, 8) +
      number(directorySize != 0 ? directorySize : end - directory, 8) + number(directory, 8);
  archive.insert(end, record + "PK\x06\x07" + number(0, 4) + number(end, 8) + number(1, 4));
  return patched(archive, "PK\x05\x06", 8, std::string(12, '\xFF'));
}

/// An entry of which everything can be wrong.
struct Raw {
  std::string name;
  std::string content = {};
  std::string before = {};    // bytes in front of its header
  std::string behind = {};    // and behind its content
  std::string extra = {};     // fields in the directory
  std::string ownName = {};   // in its header, if it is another one
  std::string ownExtra = {};  // fields there
  std::uint32_t mode = 0;
  std::uint16_t flags = 0;
  bool isZip64 = false;  // deflated, without packing anything, with sizes in a field
};

std::uint32_t checksumOf(const std::string& text) {
  return static_cast<std::uint32_t>(
      crc32_z(0, reinterpret_cast<const Bytef*>(text.data()), text.size()));
}

/// The part that a header and an entry of the directory have in common.
std::string commonOf(const Raw& entry, const std::string& name, const std::string& extra) {
  const std::string size = entry.isZip64 ? std::string(4, '\xFF') : number(entry.content.size(), 4);
  return number(20, 2) + number(entry.flags, 2) + number(entry.isZip64 ? 8 : 0, 2) + number(0, 4) +
         number(checksumOf(entry.content), 4) + size + size + number(name.size(), 2) +
         number(extra.size(), 2);
}

std::string widthsOf(const Raw& entry) {
  const std::size_t size = entry.content.size();
  return entry.isZip64 ? number(1, 2) + number(16, 2) + number(size, 8) + number(size + 5, 8) : "";
}

std::string headerAndContent(const Raw& entry) {
  const std::string name = entry.ownName.empty() ? entry.name : entry.ownName;
  const std::string extra = widthsOf(entry) + entry.ownExtra;
  const std::size_t size = entry.content.size();
  return "PK\x03\x04" + commonOf(entry, name, extra) + name + extra +
         (entry.isZip64 ? '\x01' + number(size, 2) + number(~size, 2) : "") + entry.content;
}

std::string raw(const std::vector<Raw>& entries) {
  std::string bytes;
  std::string directory;
  for (const Raw& entry : entries) {
    bytes += entry.before;
    const std::string extra = widthsOf(entry) + entry.extra;
    directory += "PK\x01\x02" + number(3 << 8, 2) + commonOf(entry, entry.name, extra) +
                 number(0, 6) + number(std::uint64_t{entry.mode} << 16, 4) +
                 number(bytes.size(), 4) + entry.name + extra;
    bytes += headerAndContent(entry) + entry.behind;
  }
  return bytes + directory + "PK\x05\x06" + number(0, 4) + number(entries.size(), 2) +
         number(entries.size(), 2) + number(directory.size(), 4) + number(bytes.size(), 4) +
         number(0, 2);
}

/// The field of an entry that gives its name in UTF-8.
std::string unicodeName(const std::string& name, const std::string& other) {
  const std::string field = '\x01' + number(checksumOf(name), 4) + other;
  return number(0x7075, 2) + number(field.size(), 2) + field;
}

const std::string DOCUMENT = widget("<name>Chess</name>");

TEST(PackagedWidget, IsReadFromAFileAndFromStandardInput) {
  const std::string bytes =
      package({{"index.html", "<p>"}, {"sub/config.xml", "<no/>"}, {"config.xml", DOCUMENT}});
  const TemporaryFile file(bytes);
  for (const std::string& argument : {file.path(), std::string("-")}) {
    SCOPED_TRACE(argument);
    EXPECT_EQ(run({"show", "--field", "name", argument}, bytes).out, "Chess\n");
    EXPECT_EQ(run({"localized", "name", argument}, bytes).out, "*  Chess\n");
  }
  EXPECT_EQ(run({"show", "--url", "http://a.example/", "--field", "name", file.path()}).out,
            "Chess\n");
}

// Images are recognised by their first bytes; none is decoded here.
TEST(PackagedWidget, APageShowsTheIconThatABrowserCanDrawWithoutHarm) {
  const std::string gif("GIF89a\x10\0\x10\0", 10);
  const std::string png("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\4\0", 20);
  const std::string pngOfLimit = png + std::string("\0\0\4\0", 4);
  const std::string jpeg("\xFF\xD8\xFF\xE0\0\4ab\xFF\xC0\0\x11\x08", 13);
  const std::string svg = "<svg xmlns='http://www.w3.org/2000/svg'>";
  const Row rows[] = {
      {gif, "image/gif"},
      {std::string("GIF87a\0\4\0\4", 10), "image/gif"},
      {std::string("GIF89a\0\0\x10\0", 10), "none"},
      {std::string("GIF89a\1\4\x10\0", 10), "none"},
      {pngOfLimit, "image/png"},
      {png + std::string("\0\0\4\1", 4), "none"},
      {png + std::string("\0\0\4", 3), "none"},
      {pngOfLimit + std::string(131072 - 24, 'x'), "image/png"},
      {pngOfLimit + std::string(131073 - 24, 'x'), "none"},
      {jpeg + std::string("\4\0\4\0", 4), "image/jpeg"},
      {jpeg + std::string("\4\1\4\0", 4), "none"},
      {jpeg, "none"},
      {svg + "<g><path d='M0 0'/></g><x xmlns='urn:editor'/></svg>", "image/svg+xml"},
      {svg + "<g id='a'/><use href='#a'/></svg>", "none"},
      {svg + "<script/></svg>", "none"},
      {svg + "<x:p xmlns:x='http://www.w3.org/1999/xhtml'/></svg>", "none"},
      {svg + "<g><title><x:b xmlns:x='http://www.w3.org/1999/xhtml'/></title></g></svg>", "none"},
      {svg + replaceAll(std::string(999, ' '), " ", "<g/>") + "</svg>", "image/svg+xml"},
      {svg + replaceAll(std::string(1000, ' '), " ", "<g/>") + "</svg>", "none"},
      {svg, "none"},
      {"<svg/>", "none"},
      {"", "none"}};
  const std::string document = widget("<icon src='./i'/>");
  const auto page = [&](const std::vector<Entry>& entries) {
    return run({"show", "--format", "html", "--locale", "de", "-"}, package(entries)).out;
  };
  expectRows(rows, [&](const std::string& content) {
    const std::string html = page({{"config.xml", document}, {"i", content}});
    const std::size_t at = html.find("src=\"data:");
    return at != std::string::npos ? html.substr(at + 10, html.find(';', at) - at - 10)
           : html.find("Icon not shown") != std::string::npos ? "none"
                                                              : html;
  });
  const Row encoded[] = {
      {"", "R0lGODlhEAAQAA=="}, {";", "R0lGODlhEAAQADs="}, {";;", "R0lGODlhEAAQADs7"}};
  for (const auto& [tail, base64] : encoded) {
    EXPECT_THAT(page({{"config.xml", document}, {"i", "text"}, {"locales/de/i", gif + tail}}),
                HasSubstr("src=\"data:image/gif;base64," + base64 + "\"/>"));
  }
  EXPECT_THAT(page({{"config.xml", widget("")}, {"icon.gif", gif}}),
              AllOf(HasSubstr("image/gif"), HasSubstr("a file that is the icon by default")));
  const std::string why =
      page({{"config.xml", widget("<icon src='a'/><icon src='b'/><icon src='c'/>")},
            {"b", "text"},
            {"locales/de/c", gif}});
  EXPECT_THAT(why, HasSubstr("a</bdi>\n<span class=\"why\">not shown: not in the package"));
  EXPECT_THAT(why, HasSubstr("b</bdi>\n<span class=\"why\">not shown: no PNG, GIF or JPEG"));
  EXPECT_THAT(why, HasSubstr("shown: <bdi>locales/<wbr/>de/<wbr/>c</bdi>, the first that can be"));
}

TEST(PackagedWidget, APageUnpacksEachIconOnceAndOnlySoMany) {
  const std::string rejected(131072, ' ');
  const std::string gif("GIF89a\x10\0\x10\0", 10);
  // The last language has an icon. What is unpacked for the others before it takes a part of the
  // 16 MiB that are unpacked for a page.
  const auto isShown = [&](int languages, bool areOwn) {
    std::string children;
    std::vector<Entry> entries(1);
    const auto add = [&](const std::string& folder) {
      for (int i = 0; i < 20; ++i) {
        entries.push_back({folder + 'i' + std::to_string(i), rejected});
      }
    };
    add("");
    for (int i = 0; i < 20; ++i) {
      children += "<icon src='i" + std::to_string(i) + "'/>";
    }
    for (int i = 1; i <= languages; ++i) {
      const std::string language = "l" + std::to_string(i);
      children.append("<name xml:lang='").append(language).append("'>x</name>");
      if (areOwn) {
        add("locales/" + language + '/');
      }
    }
    entries.push_back({"locales/l" + std::to_string(languages) + "/icon.gif", gif});
    entries.front() = {"config.xml", widget(children)};
    return run({"show", "--format", "html", "-"}, package(entries)).out.find("image/gif") !=
           std::string::npos;
  };
  EXPECT_TRUE(isShown(60, false));
  EXPECT_TRUE(isShown(5, true));
  EXPECT_FALSE(isShown(6, true));
}

TEST(PackagedWidget, ARejectedDocumentIsNamedWithItsPackage) {
  const TemporaryFile file(package({{"config.xml", "<widget>\n</other>"}}));
  const Outcome outcome = run({"show", file.path()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.error, testing::StartsWith(file.path() + "/config.xml:2:"));

  // A viewer has the package, whose first line stands for the whole of it.
  const Json log = Json::parse(run({"check", "--format", "sarif", file.path()}).out);
  const Json result = log["runs"][0]["results"][0];
  const Json place = result["locations"][0]["physicalLocation"];
  EXPECT_THAT(place["artifactLocation"]["uri"].get<std::string>(),
              testing::EndsWith(file.path().substr(file.path().rfind('/'))));
  EXPECT_EQ(place["region"], Json::parse(R"({"startLine": 1})"));
  EXPECT_FALSE(result["partialFingerprints"].contains("primaryLocationLineHash"));
  EXPECT_EQ(result["locations"][0]["logicalLocations"],
            Json::array({{{"fullyQualifiedName", "config.xml:2:1"}, {"kind", "resource"}}}));
  EXPECT_THAT(result["message"]["text"].get<std::string>(),
              testing::StartsWith("config.xml:2:1: "));
}

TEST(PackagedWidget, IsCheckedWithItsDocument) {
  // A name that is no UTF-8 has a field for it, or is in code page 437.
  const std::string umlaut = "\xC3\xBC";
  const std::string document = widget("\n<icon src='Index.html'/><icon src='" + umlaut +
                                      ".png'/><icon src='" + umlaut + ".gif'/>");
  const TemporaryFile file(
      package({{"config.xml", document},
               {"index.html"},
               {"MAP.png"},
               {"map.png"},
               {"\x81.png"},
               {"\xFC.gif", "", ZIP_CM_STORE, false, "\x6A\x5B\x7D\x56" + umlaut + ".gif"}}));
  EXPECT_EQ(
      run({"check", file.path()}).out,
      file.path() +
          ": warning: \"map.png\": Differs from \"MAP.png\" by case only; some systems take one "
          "for the other. [ambiguous-name]\n" +
          file.path() +
          "/config.xml:2:12: warning: icon: src=\"Index.html\": No such file in the package. Did "
          "you mean \"index.html\"? [missing-file]\n2 warnings\n");
  const Json json = Json::parse(run({"check", "--format", "jsonl", file.path()}).out);
  EXPECT_EQ(json["findings"][0]["value"], "map.png");
  EXPECT_EQ(json["findings"][0]["line"], nullptr);
  EXPECT_EQ(json["findings"][1]["suggestion"], "index.html");
  EXPECT_EQ(run({"check", "-"}, document).out, "no findings\n");
}

TEST(PackagedWidget, IsRejectedWhenItsDocumentIsInDoubt) {
  const std::size_t limit = std::size_t{16} * 1024 * 1024;
  const std::size_t harmless = std::size_t{1024} * 1024;
  const auto paddedTo = [](std::size_t size) {
    std::string document = widget("<name>Chess</name><license></license>");
    document.insert(document.find("</license>"), size - document.size(), ' ');
    return document;
  };
  const std::string padded = paddedTo(limit);
  const std::string whole = package({{"config.xml", DOCUMENT, ZIP_CM_STORE}});
  const std::string bomb = package({{"config.xml", padded + ' '}});
  // Both places that say how large the entry is say that it is small.
  const std::string lie =
      replaceAll(bomb, std::string("\x01\x00\x00\x01", 4), std::string("\x10\x00\x00\x00", 4));
  ASSERT_NE(lie, bomb);
  const std::string streamed = patched(whole, "PK\x03\x04", 6, "\x08");  // sizes come later
  const std::string withoutSizes = patched(streamed, "PK\x03\x04", 14, std::string(12, '\0'));
  const char* const otherHeader = "'config.xml', with a header of its own that says something";
  const std::string gapped = std::string(whole).insert(whole.rfind("PK\x05\x06"), "x");
  const Raw document = {"config.xml", DOCUMENT};
  const std::string hidden = headerAndContent(document);
  Raw link = document;
  link.mode = 0120777;
  // The document of the directory stands in the content of another file.
  const std::string nested =
      patched(raw({{"a", hidden}, document}), "PK\x01\x02", 42, number(31, 4));
  Raw large = document;
  large.isZip64 = true;
  const std::string sizes = number(DOCUMENT.size(), 8) + number(DOCUMENT.size() + 5, 8);
  const std::string swapped = number(DOCUMENT.size() + 5, 8) + number(DOCUMENT.size(), 8);
  const std::string wide = raw({large});
  const struct {
    const char* title;
    std::string bytes;
    const char* reason;
  } cases[] = {
      {"empty archive", std::string("PK\x05\x06") + std::string(18, '\0'),
       "no config.xml at its root. ["},
      {"cut short", whole.substr(0, whole.size() / 2), "no usable ZIP archive: "},
      {"only its beginning", "PK\x03\x04", "no usable ZIP archive: "},
      {"in a folder", package({{"chess/a.html"}, {"chess/config.xml", DOCUMENT}}),
       "root, but in 'chess/'; pack the contents of this folder, not the folder. ["},
      {"deep in a folder", package({{"a/b/config.xml", DOCUMENT}}), "no config.xml at its root. ["},
      {"a folder of that name", package({{"config.xml/a", DOCUMENT}}),
       "no config.xml at its root. [unusable-package]\n"},
      {"another spelling", package({{"./config.xml", DOCUMENT}}),
       "root; './config.xml' is another name."},
      {"other case", package({{"Config.XML", DOCUMENT}}), "root; 'Config.XML' is another name."},
      {"twice",
       replaceAll(package({{"config.xml", DOCUMENT}, {"config.xmX", DOCUMENT}}), "config.xmX",
                  "config.xml"),
       "more than one config.xml"},
      {"encrypted", package({{"config.xml", DOCUMENT, ZIP_CM_STORE, true}}), "it is encrypted"},
      {"another method", patched(patched(whole, "PK\x01\x02", 10, "\x0C"), "PK\x03\x04", 8, "\x0C"),
       "compressed by method 12, and"},
      {"too many entries", zip64(whole, 100001), "it has more than 100000 entries"},
      {"a large directory", zip64(whole, 1, 16777217), "a central directory of more than 16 MiB"},
      {"fewer entries", zip64(whole, 2), "it has a damaged central directory"},
      {"more entries", patched(whole, "PK\x05\x06", 8, number(0, 4)),
       "a damaged central directory"},
      {"a directory elsewhere", patched(whole, "PK\x05\x06", 16, "\xFF"), "outside of itself"},
      {"split", patched(whole, "PK\x05\x06", 4, "\x01"), "it is split over several files"},
      {"an end in the comment",
       patched(whole, "PK\x05\x06", 20, number(22, 2)) + "PK\x05\x06" + number(0, 18),
       "it has two ends"},
      {"something behind", whole + 'x', "has something behind its end"},
      {"two names", patched(whole, "PK\x03\x04", 30, "C"), "no header of its own"},
      {"content elsewhere", patched(whole, "PK\x01\x02", 42, "\xFF"),
       "not in its central directory"},
      {"longer than the archive", patched(withoutSizes, "PK\x01\x02", 20, "\xFF\xFF"),
       "beyond the archive"},
      {"another size", patched(withoutSizes, "PK\x01\x02", 24, "\x01"), "it has another size than"},
      {"another size in a header that may have none", patched(streamed, "PK\x03\x04", 22, "\x01"),
       otherHeader},
      {"a gap", gapped, "something between its central directory and its end"},
      {"two numbers of entries", patched(zip64(whole, 1), "PK\x05\x06", 8, number(2, 4)),
       "it has two ends"},
      {"two sizes of the directory", patched(zip64(whole, 1), "PK\x05\x06", 12, number(1, 4)),
       "it has two ends"},
      {"two places of the directory", patched(zip64(whole, 1), "PK\x05\x06", 16, number(1, 4)),
       "it has two ends"},
      {"a record of another size", patched(zip64(whole, 1), "PK\x06\x06", 4, "\x2D"),
       "it has a damaged end"},
      {"encrypted in its header", patched(whole, "PK\x03\x04", 6, "\x01"), otherHeader},
      {"another size in its header", patched(whole, "PK\x03\x04", 22, "\x01"), otherHeader},
      {"another packed size there", patched(whole, "PK\x03\x04", 18, "\x01"), otherHeader},
      {"another checksum there", patched(whole, "PK\x03\x04", 14, std::string(4, '\0')),
       otherHeader},
      {"a NUL in a name",
       replaceAll(package({{"config.xml", DOCUMENT}, {"config.xml_a"}}), "xml_a",
                  std::string("xml\0a", 5)),
       "it has an entry with a NUL in its name"},
      {"two names of an entry",
       package({{"config.xml", DOCUMENT},
                {"other", "", ZIP_CM_STORE, false,
                 "\x20\x35\x58\xD9"
                 "config.xml"}}),
       "an entry, 'other', that is 'config.xml' to some programs"},
      {"two names of a document",
       raw({{"config.xml", DOCUMENT, "", "", unicodeName("config.xml", "other")}}),
       "an entry, 'config.xml', that is 'other' to some programs"},
      {"another name in its header", raw({{"a.html", "", "", "", "", "b.html"}, document}),
       "'a.html', with no header of its own where"},
      {"another name in a field there",
       raw({{"a.html", "", "", "", "", "", unicodeName("a.html", "b.html")}, document}),
       "'a.html', with a header of its own that says something else"},
      {"a field of another entry there",
       raw({{"a.html", "", "", "", "", "", unicodeName("a.html", "config.xml")}, document}),
       "'a.html', with a header of its own that says something else"},
      {"a document in front", raw({{"config.xml", DOCUMENT, hidden}}),
       "an entry that is not in its central directory"},
      {"a document between entries", raw({{"a"}, {"config.xml", DOCUMENT, hidden}}),
       "an entry that is not in its central directory"},
      {"a document behind all entries", raw({{"config.xml", DOCUMENT, "", hidden}}),
       "an entry that is not in its central directory"},
      {"a document within an entry", nested, "'config.xml', that begins within another one"},
      {"a document that is a link", raw({link}), "package is a symbolic link, or no file."},
      {"ZIP64 sizes in the wrong order", std::string(wide).replace(wide.find(sizes), 16, swapped),
       otherHeader},
      {"the same in the directory", std::string(wide).replace(wide.rfind(sizes), 16, swapped),
       otherHeader},
      {"no ZIP64 sizes", patched(raw({document}), "PK\x01\x02", 20, std::string(8, '\xFF')),
       otherHeader},
      {"damaged", replaceAll(whole, "Chess", "Cheat"), "CRC error"},
      {"bomb", bomb, "package is larger than 16 MiB."},
      {"small bomb", package({{"config.xml", paddedTo(harmless + 1)}}),
       "it is larger than 1 MiB and than a hundred times its packed size"},
      {"bomb that lies", lie, "config.xml "},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.title);
    const TemporaryFile file(c.bytes);
    for (const std::string& argument : {file.path(), std::string("-")}) {
      const Outcome outcome = run({"show", argument}, c.bytes);
      EXPECT_EQ(outcome.status, 1);
      EXPECT_THAT(outcome.error, HasSubstr(argument + ": "));
      EXPECT_THAT(outcome.error, HasSubstr(c.reason));
      EXPECT_EQ(outcome.out, "");
    }
  }
  for (const std::string& bytes :
       {package({{"config.xml", padded, ZIP_CM_STORE}}),
        package({{"config.xml", paddedTo(harmless)}}), zip64(whole, 1),
        patched(zip64(whole, 1), "PK\x05\x06", 8, number(1, 2) + number(1, 2)), withoutSizes, wide,
        package({{"config.xml", DOCUMENT, ZIP_CM_STORE, false, "\x01\x01\x01\x01no"}})}) {
    EXPECT_EQ(run({"show", "--field", "name", "-"}, bytes).out, "Chess\n");
  }
}

TEST(PackagedWidget, IsNoPageOrOtherArchiveOfSuchAName) {
  const TemporaryFolder folder;
  const std::string page = "\xEF\xBB\xBF\n<!DOCTYPE HTML>\n<html></html>";
  const std::string reason = ": error: The package is no ZIP archive: it is ";
  const std::string code = ". [unusable-package]\n";
  for (const auto& [content, kind] : {std::pair<std::string, const char*>(page, "an HTML page"),
                                      {"<html lang='en'>", "an HTML page"},
                                      {"\x1F\x8B\x08", "a gzip file; pack it with zip"}}) {
    const std::string path = folder.add("chess.Wgt", content);
    EXPECT_EQ(run({"show", path}).error, path + reason + kind + code);
  }
  EXPECT_EQ(run({"show", "--field", "name", folder.add("a.wgt", DOCUMENT)}).out, "Chess\n");
  EXPECT_THAT(run({"check", folder.add("page.xml", page)}).out, HasSubstr("wrong-root"));
}

TEST(PackagedWidget, HasFindingsForLinksAndBytesOfNoEntry) {
  const Raw document = {"config.xml", widget("<content src='a.html'/>")};
  Raw link = {"a.html", "/etc/passwd"};
  link.mode = 0120777;
  Raw device = {"icon.png"};
  device.mode = 020666;
  Raw folder = {"folder"};  // without a "/" at the end a file to some programs
  folder.mode = 040755;
  const std::string isLink =
      "\": A symbolic link, which may lead out of the package; pack the file instead. "
      "[outside-package]\n";
  EXPECT_EQ(run({"check", "-"}, raw({document, link, device, folder})).out,
            "-: warning: \"a.html" + isLink + "-: warning: \"icon.png" + isLink +
                "-: warning: \"folder" + isLink + "3 warnings\n");
  Raw early = document;
  early.behind = "1234567";
  EXPECT_EQ(run({"check", "-"}, raw({early, {"a.html", "<p>", "89"}})).out,
            "-: warning: 9 bytes of the package belong to no file; pack it again. "
            "[unlisted-bytes]\n1 warning\n");
  // The icon of a page is not read through a link.
  Raw icon = {"icon.png", std::string("GIF89a\x10\0\x10\0", 10)};
  const auto page = [&] {
    return run({"show", "--format", "html", "-"}, raw({{"config.xml", DOCUMENT}, icon})).out;
  };
  EXPECT_THAT(page(), HasSubstr("image/gif"));
  icon.mode = 0120777;
  EXPECT_THAT(page(), testing::Not(HasSubstr("image/gif")));
}

TEST(PackagedWidget, HasNoFindingsForWhatArchiversWrite) {
  Raw document = {"config.xml", widget("<content src='a.html'/>")};
  Raw page = {"a.html", "<p>"};
  Raw folder = {"icons/"};
  folder.mode = 040755;
  page.mode = 0100644;
  const auto withDescriptor = [](Raw entry, const std::string& mark, int width) {
    entry.flags = 8;
    const std::string size = number(entry.content.size(), width);
    entry.behind = mark + number(checksumOf(entry.content), 4) + size + size;
    return entry;
  };
  const std::string mark = "PK\x07\x08";
  for (const std::string& bytes :
       {raw({document, folder, page}), raw({withDescriptor(page, "", 4), document}),
        raw({withDescriptor(document, mark, 4), page}),
        raw({page, withDescriptor(document, "", 8)}),
        raw({withDescriptor({"empty"}, mark, 8), page, withDescriptor(document, mark, 8)})}) {
    EXPECT_EQ(run({"check", "-"}, bytes).out, "no findings\n");
  }
}

}  // namespace
}  // namespace nimbrel_test
