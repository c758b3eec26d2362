#include "tools/html/Requests.h"

#include <algorithm>
#include <string_view>
#include <tuple>

namespace orvane::nimbrel::tools {
namespace {

using config::Config;

constexpr std::size_t LONGEST = 300;         // characters of what the document says
constexpr std::size_t MOST_PARAMETERS = 50;  // of one feature
constexpr std::size_t MOST_LANGUAGES = 4;    // that are named

// Schemes whose connections anybody on the way can read.
constexpr std::string_view READABLE_SCHEMES[] = {"http", "ws", "ftp"};

std::string meaningOf(const Config::AccessRequest& request) {
  std::string meaning = request.subdomains ? "this host and all its subdomains" : "this host only";
  const bool isReadable = std::find(std::begin(READABLE_SCHEMES), std::end(READABLE_SCHEMES),
                                    request.scheme) != std::end(READABLE_SCHEMES);
  return isReadable ? meaning + ", not encrypted" : meaning;
}

void printAudiences(HtmlWriter& html, const std::bitset<MOST_AUDIENCES>& asking,
                    const std::vector<const Audience*>& audiences) {
  html.markup("<span class=\"whom\">only for users of ");
  if (asking.count() > MOST_LANGUAGES) {
    html.number(asking.count()).markup(" of the languages</span>");
    return;
  }
  bool isFirst = true;
  for (std::size_t i = 0; i < audiences.size(); ++i) {
    if (asking[i]) {
      html.text(isFirst ? "" : ", ");
      printAudience(html, *audiences[i]);
      isFirst = false;
    }
  }
  html.markup("</span>");
}

/// Prints a list: `print(entry)` writes the content of an entry. The first ones are seen at once,
/// the others when asked for; of a very long list no more than 1,000 are printed, and the number of
/// the others.
template <typename Entries, typename Print>
void printEntries(HtmlWriter& html, const Entries& entries, const Print& print) {
  constexpr std::size_t SEEN = 12;
  constexpr std::size_t MOST = 1000;
  // A button that brings a single entry takes as much room as the entry.
  const bool isFolded = entries.size() > SEEN + 1;
  std::size_t number = 0;
  html.markup("<ul>\n");
  for (const auto& entry : entries) {
    if (number == MOST) {
      break;
    }
    if (isFolded && number == SEEN) {
      html.markup("</ul>\n<details><summary>Show ")
          .number(entries.size() - SEEN)
          .markup(" more</summary>\n<ul>\n");
    }
    html.markup("<li>");
    print(entry);
    html.markup("</li>\n");
    ++number;
  }
  html.markup("</ul>\n");
  if (number < entries.size()) {
    html.markup("<p class=\"cut\">Not on this page: ")
        .number(entries.size() - number)
        .markup(" more.</p>\n");
  }
  if (isFolded) {
    html.markup("</details>\n");
  }
}

}  // namespace

bool Requests::Request::operator<(const Request& other) const {
  return std::tie(subject, meaning, parameters) <
         std::tie(other.subject, other.meaning, other.parameters);
}

void Requests::Group::add(Request request, std::size_t audience) {
  const auto [entry, isNew] = asking_.try_emplace(std::move(request));
  entry->second.set(audience);
  if (isNew) {
    inOrder_.push_back(entry);
  }
}

void Requests::Group::print(HtmlWriter& html, const Asking& all,
                            const std::vector<const Audience*>& audiences) const {
  printEntries(html, inOrder_, [&](const auto& entry) {
    const Request& request = entry->first;
    html.markup("<span class=\"subject\"><bdi>").text(request.subject, LONGEST).markup("</bdi>");
    html.markup("</span> <span class=\"meaning\">").text(request.meaning).markup("</span>");
    if (entry->second != all) {
      html.markup(" ");
      printAudiences(html, entry->second, audiences);
    }
    std::size_t left = MOST_PARAMETERS;
    for (const auto& [name, value] : request.parameters) {
      if (left-- == 0) {
        html.markup("<br/><span class=\"cut\">and ")
            .count(request.parameters.size() - MOST_PARAMETERS, "more parameter")
            .markup("</span>");
        break;
      }
      html.markup("<br/><span class=\"parameter\"><bdi>").text(name, LONGEST);
      html.markup("</bdi> = <bdi>").text(value, LONGEST).markup("</bdi></span>");
    }
  });
}

void Requests::add(const Config& record, std::size_t audience) {
  all_.set(audience);
  addAccess(record, audience);
  for (const Config::Feature& feature : record.getFeatures()) {
    features_.add(
        {feature.name, feature.required ? "required: it does not run without it" : "optional",
         feature.params},
        audience);
  }
  const auto addPermissions = [&](Group& group, const std::map<std::string, bool>& permissions) {
    for (const bool isAllowed : {true, false}) {
      for (const auto& [name, allowed] : permissions) {
        if (allowed == isAllowed) {
          group.add({name, allowed ? "allowed" : "not allowed", {}}, audience);
        }
      }
    }
  };
  addPermissions(permissions_, record.getAppPermissions());
  addPermissions(messaging_, record.getMessagingPermissions());
  std::vector<std::string_view> paths;  // in a map without an order
  for (const auto& entry : record.getExports()) {
    paths.emplace_back(entry.second.resourcePath);
  }
  std::sort(paths.begin(), paths.end());
  for (const std::string_view path : paths) {
    exports_.add({std::string(path), "", {}}, audience);
  }
}

/// What opens everything comes first.
void Requests::addAccess(const Config& record, std::size_t audience) {
  const std::vector<Config::AccessRequest>& requests = record.getAccessRequestList();
  if (std::any_of(requests.begin(), requests.end(),
                  [](const Config::AccessRequest& request) { return request.allOrigins != 0; })) {
    access_.add({"*", "every address on the network", {}}, audience);
  }
  for (const Config::AccessRequest& request : requests) {
    if (request.allOrigins == 0) {
      access_.add({request.scheme + "://" + request.host + ':' + std::to_string(request.port),
                   meaningOf(request),
                   {}},
                  audience);
    }
  }
}

void Requests::print(HtmlWriter& html, const std::vector<const Audience*>& audiences) const {
  const struct {
    const char* title;
    const Group& group;
    const char* meaning;
    const char* nothing;
  } groups[] = {
      {"Network access", access_, "The addresses that it wants to connect to.",
       "It asks for no address on the network."},
      {"Features", features_, "What it wants of the device.", "It asks for no feature."},
      {"Permissions", permissions_, "What its document allows or forbids.",
       "It asks for no permission."},
      {"Messages", messaging_, "The applications that it may exchange messages with, or may not.",
       "It exchanges messages with no other application."},
      {"Exports", exports_, "Files that other applications get from it.",
       "Other applications get no files from it."},
  };
  html.markup("<div class=\"requests\">\n");
  for (const auto& row : groups) {
    html.markup("<section class=\"request\">\n<h3>").text(row.title).markup("</h3>\n<p>");
    html.text(row.group.isEmpty() ? row.nothing : row.meaning).markup("</p>\n");
    if (!row.group.isEmpty()) {
      row.group.print(html, all_, audiences);
    }
    html.markup("</section>\n");
  }
  html.markup("</div>\n");
}

}  // namespace orvane::nimbrel::tools
