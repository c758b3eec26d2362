#include <unicode/unistr.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <map>
#include <string_view>

#include "tools/findings/Explanation.h"
#include "tools/findings/FindingPrinter.h"
#include "tools/findings/SarifRules.h"
#include "util/PercentEscape.h"

namespace orvane::nimbrel::tools {
namespace {

using check::Position;

constexpr char SCHEMA[] =
    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json";
/// What relative addresses are relative to: the folder in which the tool was started.
constexpr char BASE[] = "SRCROOT";

/// Hashes in hexadecimal, each with how often it was there so far.
class HashCounter {
 public:
  std::string next(std::uint64_t hash) {
    char digits[16];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), hash, 16).ptr;
    return std::string(std::begin(digits), end) + ':' + std::to_string(++seen_[hash]);
  }

 private:
  std::map<std::uint64_t, std::uint32_t> seen_;
};

/// Tells a finding from others of its document by what it says, not by its place, so that a viewer
/// knows it again when lines move. FNV-1a; not for security.
std::uint64_t hashOf(const ShownFinding& shown) {
  constexpr std::size_t LONGEST = 200;  // of what the document says
  std::uint64_t hash = 0xCBF29CE484222325U;
  const check::Wording& wording = shown.wording;
  for (const std::string_view part : {shown.kind.name, std::string_view(wording.element),
                                      std::string_view(wording.attribute), wording.value}) {
    for (const char c : part.substr(0, LONGEST)) {
      hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    }
    hash = (hash ^ 0xFFU) * 0x100000001B3U;  // ends the part
  }
  return hash;
}

/// Tells the lines of a document apart by what begins there, as code scanning services do for the
/// fingerprint "primaryLocationLineHash": with the next hundred UTF-16 code units without blanks
/// and with "\n" for each end of a line.
std::vector<std::string> lineHashes(const std::string& text) {
  constexpr std::uint64_t FACTOR = 37;
  constexpr std::size_t BLOCK = 100;
  std::u16string units;
  const auto whole = icu::UnicodeString::fromUTF8(text);
  for (std::int32_t i = 0; i < whole.length(); ++i) {
    if (whole[i] != ' ' && whole[i] != '\t' &&
        (whole[i] != '\n' || i == 0 || whole[i - 1] != '\r')) {
      units += whole[i] == '\r' ? u'\n' : whole[i];
    }
  }
  units += u'\xFFFF';  // the end
  const auto unitAt = [&](std::size_t at) { return at < units.size() ? units[at] : u'\0'; };
  std::uint64_t hash = 0;
  std::uint64_t oldest = 1;  // what the first unit of a block counts in the next one
  for (std::size_t i = 0; i < BLOCK; ++i) {
    hash = hash * FACTOR + unitAt(i);
    oldest *= FACTOR;
  }
  HashCounter counter;
  std::vector<std::string> hashes;
  for (std::size_t at = 0; at < units.size(); ++at) {
    if (at == 0 || units[at - 1] == u'\n') {
      hashes.push_back(counter.next(hash));
    }
    hash = hash * FACTOR + unitAt(at + BLOCK) - oldest * units[at];
  }
  return hashes;
}

bool isAbsolute(const std::string& path) noexcept {
  return path[0] == '/';
}

/// A path, normalised, as a URI (RFC 3986): of the scheme "file" when it is absolute, else a
/// relative reference.
std::string uriOf(const std::string& path) {
  std::string normal = std::filesystem::path(path).lexically_normal();
  if (normal.size() > 1 && normal.back() == '/') {
    normal.pop_back();
  }
  std::string uri = isAbsolute(path) ? "file://" : "";
  for (const char c : normal) {
    if (util::ascii::isLetterOrDigit(c) || std::string_view("/-._~").find(c) != std::string::npos) {
      uri += c;
    } else {
      util::internal::appendEscape(uri, '%', c);
    }
  }
  return uri.empty() ? "." : uri;
}

class SarifPrinter : public FindingPrinter {
 public:
  void begin() override {
    json_.beginObject();
    json_.member("$schema", SCHEMA);
    json_.member("version", "2.1.0");
    json_.key("runs");
    json_.beginArray();
    json_.beginObject();
    json_.object("tool", [&] { writeSarifTool(json_); });
    json_.member("columnKind", "utf16CodeUnits");
    json_.object("originalUriBaseIds", [&] {
      json_.object(BASE, [&] {
        writeSarifMessage(json_, "description", "The folder in which nimbrel-config was started.");
      });
    });
    json_.key("results");
    json_.beginArray();
  }

  void finish() override {
    json_.endArray();
    json_.listOfOne("invocations", [&] {
      json_.member("executionSuccessful", unreadable_.empty());
      json_.list("toolExecutionNotifications", [&] {
        for (const auto& [file, line] : unreadable_) {
          printNotification(file, line);
        }
      });
    });
    json_.endObject();
    json_.endArray();
    json_.endObject();
    json_.finish();
  }

 protected:
  void printDocument(const CheckedDocument& document, const FindingCounts& counts) override {
    HashCounter seen;
    const bool isPackaged = document.name != document.file;
    const std::vector<std::string> lines = counts.all() == 0 || isPackaged
                                               ? std::vector<std::string>()
                                               : lineHashes(document.report->document());
    forEachFinding(*document.report, [&](const ShownFinding& shown) {
      const std::size_t line = std::max<std::size_t>(shown.place.begin.line, 1);
      json_.object([&] {
        printResult(document, shown);
        json_.object("partialFingerprints", [&] {
          json_.member("finding/v1", seen.next(hashOf(shown)));
          if (!isPackaged) {
            json_.member("primaryLocationLineHash", line > lines.size() ? "" : lines[line - 1]);
          }
        });
        if (shown.fix != nullptr && !isPackaged) {
          printFix(document.file, shown);
        }
      });
    });
  }

  void printFailure(const std::string& file, const DocumentFailure& failure) override {
    unreadable_.emplace_back(file, failure.what());
  }

 private:
  void printArtifact(const std::string& file) {
    json_.object("artifactLocation", [&] {
      json_.member("uri", uriOf(file));
      if (!isAbsolute(file)) {
        json_.member("uriBaseId", BASE);
      }
    });
  }

  /// Columns are those of the format: UTF-16 code units. Code scanning shows nothing without a
  /// line.
  void printRegion(const char* key, const check::Place& place) {
    json_.object(key, [&] {
      json_.member("startLine", std::max(place.begin.line, 1U));
      if (place.begin.utf16Column != 0) {
        json_.member("startColumn", place.begin.utf16Column);
      }
      if (place.begin.utf16Column != 0 && place.end.utf16Column != 0) {
        json_.member("endLine", place.end.line);
        json_.member("endColumn", place.end.utf16Column);
        json_.member("byteOffset", place.begin.byte);
        json_.member("byteLength", place.end.byte - place.begin.byte);
      }
    });
  }

  /// "config.xml:2:5", without what is not known; empty where no place in a package is.
  static std::string placeInPackage(const CheckedDocument& document, const Position& position) {
    return document.name == document.file || position.line == 0
               ? ""
               : placed(document.name.substr(document.file.size() + 1), position.line,
                        position.column);
  }

  /// The members of a location. Of a package, which is the file that a viewer has, its first line
  /// stands for a place in its document.
  void printLocation(const CheckedDocument& document, const check::Place& place) {
    const std::string inPackage = placeInPackage(document, place.begin);
    json_.object("physicalLocation", [&] {
      printArtifact(document.file);
      printRegion("region", inPackage.empty() ? place : check::Place());
    });
    if (!inPackage.empty()) {
      json_.listOfOne("logicalLocations", [&] {
        json_.member("fullyQualifiedName", inPackage);
        json_.member("kind", "resource");
      });
    }
  }

  void printResult(const CheckedDocument& document, const ShownFinding& shown) {
    const std::string inPackage = placeInPackage(document, shown.place.begin);
    json_.member("ruleId", shown.kind.name);
    json_.member("ruleIndex", &shown.kind - check::codeDescriptions().begin());
    json_.member("level", check::levelName(shown.kind.level));
    writeSarifMessage(json_, "message",
                      inPackage + (inPackage.empty() ? "" : ": ") + sentenceOf(shown.wording));
    json_.listOfOne("locations", [&] { printLocation(document, shown.place); });
    if (const Position other = shown.report.otherOf(shown.finding); other.line != 0) {
      json_.listOfOne("relatedLocations", [&] {
        printLocation(document, {other, {}});
        writeSarifMessage(json_, "message", "The message refers to this place.");
      });
    }
  }

  void printFix(const std::string& file, const ShownFinding& shown) {
    json_.listOfOne("fixes", [&] {
      json_.listOfOne("artifactChanges", [&] {
        printArtifact(file);
        json_.list("replacements", [&] {
          for (const check::Edit& edit : shown.fix->edits) {
            json_.object([&] {
              printRegion("deletedRegion", shown.report.placeOf(edit.span));
              json_.object("insertedContent", [&] { json_.member("text", edit.text); });
            });
          }
        });
      });
    });
  }

  void printNotification(const std::string& file, const std::string& line) {
    json_.object([&] {
      json_.object("descriptor", [&] {
        json_.member("id", UNREADABLE_FILE);
        json_.member("index", 0);
      });
      json_.member("level", "error");
      writeSarifMessage(json_, "message", line);
      json_.listOfOne("locations",
                      [&] { json_.object("physicalLocation", [&] { printArtifact(file); }); });
    });
  }

  JsonWriter json_;
  std::vector<std::pair<std::string, std::string>> unreadable_;  // and what standard error says
};

}  // namespace

std::unique_ptr<FindingPrinter> makeSarifPrinter() {
  return std::make_unique<SarifPrinter>();
}

}  // namespace orvane::nimbrel::tools
