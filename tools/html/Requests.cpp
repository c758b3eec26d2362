#include "tools/html/Requests.h"

#include <algorithm>
#include <string_view>
#include <tuple>

#include "tools/record/RecordFields.h"
#include "tools/record/SettingRows.h"

namespace orvane::nimbrel::tools {
namespace {

using config::Config;

constexpr std::size_t LONGEST = 300;         // characters of what the document says
constexpr std::size_t MOST_PARAMETERS = 50;  // of one feature
constexpr std::size_t MOST_LANGUAGES = 4;    // that are named

// Schemes whose connections anybody on the way can read.
constexpr std::string_view READABLE_SCHEMES[] = {"http", "ws", "ftp"};

// The settings that a reviewer looks for first, and what they ask the runtime for.
constexpr struct {
  std::string_view name;
  const char* meaning;
} SECURITY[] = {
    {"overrideProxy", "connections go through this proxy"},
    {"enableWrsProxy", "connections go through the WRS proxy"},
    {"allowTlsFallback", "connections may fall back to an older TLS"},
    {"httpHeaders", "sent with each request"},
    {"inspector", "the application can be inspected while it runs"},
    {"debug", "the process writes debug lines"},
    {"persistent", "cookies are kept"},
    {"usePrivateCookies", "cookies of its own"},
    {"useDeviceCookies", "cookies of the device"},
    {"useAuthCookies", "cookies for authentication"},
    {"useAccessToken", "an access token beside the cookies"},
    {"useAuthCookiesForRegionalStack", "cookies for authentication at regional servers"},
    {"authentication", "requests are authenticated by a token"},
    {"allowHTTPSApplicationManifestCrossDomain",
     "a manifest that came by HTTPS may name resources of other hosts"},
};

std::string meaningOf(const Config::AccessRequest& request) {
  std::string meaning = request.subdomains ? "this host and all its subdomains" : "this host only";
  const bool isReadable = std::find(std::begin(READABLE_SCHEMES), std::end(READABLE_SCHEMES),
                                    request.scheme) != std::end(READABLE_SCHEMES);
  return isReadable ? meaning + ", not encrypted" : meaning;
}

void printAudiences(HtmlWriter& html, const std::bitset<MOST_AUDIENCES>& asking,
                    const std::vector<Audience>& audiences) {
  html.markup("<span class=\"whom\">only for users of ");
  if (asking.count() > MOST_LANGUAGES) {
    html.number(asking.count()).markup(" of the languages</span>");
    return;
  }
  bool isFirst = true;
  for (std::size_t i = 0; i < audiences.size(); ++i) {
    if (asking[i]) {
      html.text(isFirst ? "" : ", ");
      printAudience(html, audiences[i]);
      isFirst = false;
    }
  }
  html.markup("</span>");
}

void printParameters(HtmlWriter& html,
                     const std::vector<std::pair<std::string, std::string>>& parameters) {
  for (std::size_t i = 0; i < std::min(parameters.size(), MOST_PARAMETERS); ++i) {
    html.markup("<br/><span class=\"parameter\"><bdi>").text(parameters[i].first, LONGEST);
    html.markup("</bdi> = <bdi>").text(parameters[i].second, LONGEST).markup("</bdi></span>");
  }
  if (parameters.size() > MOST_PARAMETERS) {
    html.markup("<br/><span class=\"cut\">and ")
        .count(parameters.size() - MOST_PARAMETERS, "more parameter")
        .markup("</span>");
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

/// The first ones are seen at once, the others when asked for; of a very long list no more than
/// 1,000 are printed, and the number of the others.
void Requests::Group::print(HtmlWriter& html, const Asking& all,
                            const std::vector<Audience>& audiences) const {
  constexpr std::size_t SEEN = 12;
  constexpr std::size_t MOST = 1000;
  // A button that brings a single entry takes as much room as the entry.
  const bool isFolded = inOrder_.size() > SEEN + 1;
  html.markup("<ul>\n");
  for (std::size_t i = 0; i < std::min(inOrder_.size(), MOST); ++i) {
    if (isFolded && i == SEEN) {
      html.markup("</ul>\n<details><summary>Show ").number(inOrder_.size() - SEEN);
      html.markup(" more</summary>\n<ul>\n");
    }
    const auto& [request, asking] = *inOrder_[i];
    html.markup("<li>");
    html.markup("<span class=\"subject\"><bdi>").address(request.subject, LONGEST);
    html.markup("</bdi></span>");
    if (!request.meaning.empty()) {
      html.markup(" <span class=\"meaning\">").text(request.meaning).markup("</span>");
    }
    if (asking != all) {
      html.markup(" ");
      printAudiences(html, asking, audiences);
    }
    printParameters(html, request.parameters);
    html.markup("</li>\n");
  }
  html.markup("</ul>\n");
  if (inOrder_.size() > MOST) {
    html.markup("<p class=\"cut\">Not on this page: ").number(inOrder_.size() - MOST);
    html.markup(" more.</p>\n");
  }
  if (isFolded) {
    html.markup("</details>\n");
  }
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
  for (const std::string& path : exportedPaths(record)) {
    exports_.add({path, "", {}}, audience);
  }
  for (const Config::Preference& preference : record.getPreferences()) {
    preferences_.add(
        {preference.value ? preference.name + " = " + preference.value.get() : preference.name,
         preference.readonly ? "the application may not change it" : "",
         {}},
        audience);
  }
  addSettings(record, audience);
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

void Requests::addSettings(const Config& record, std::size_t audience) {
  struct Rows {
    Group& security;
    Group& others;
    std::size_t audience;

    void row(const char* name, const std::string& value, const std::string& note = {}) {
      const auto* const found = std::find_if(std::begin(SECURITY), std::end(SECURITY),
                                             [&](const auto& row) { return row.name == name; });
      const bool isFound = found != std::end(SECURITY);
      Request request = {std::string(name) + " = " + value, isFound ? found->meaning : "", {}};
      if (!note.empty()) {
        request.parameters.emplace_back("properties", note);
      }
      (isFound ? security : others).add(std::move(request), audience);
    }
    /// A key of the document's own, whatever it is called.
    void row(const std::string& name, const std::string& value) {
      others.add({name + " = " + value, "", {}}, audience);
    }
  } rows = {security_, settings_, audience};
  tools::addSettings(rows, record.getNetSettings());
  tools::addSettings(rows, record.getAppSettings());
  tools::addSettings(rows, record.getCookieJarSettings());
  if (record.getOrvnAuthMode() != 0) {
    rows.row("authentication", "token");
  }
  if (record.getChromeSettings() != "system") {
    rows.row("search bar", record.getChromeSettings());
  }
  tools::addSettings(rows, record.getGestureSettings());
  tools::addSettings(rows, record.getLocalResources());
}

void Requests::print(HtmlWriter& html, const std::vector<Audience>& audiences) const {
  const auto print = [&](const char* title, const Group& group, const char* meaning) {
    html.markup("<section class=\"request\">\n<h3>").text(title).markup("</h3>\n<p>");
    html.text(meaning).markup("</p>\n");
    if (!group.isEmpty()) {
      group.print(html, all_, audiences);
    }
    html.markup("</section>\n");
  };
  const struct {
    const char* title;
    const Group& group;
    const char* meaning;
    const char* nothing;
  } groups[] = {
      {"Security", security_, "Settings for connections, cookies, authentication and inspection.",
       "It sets no proxy, no TLS fallback, no inspector, no cookies and no authentication."},
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
    print(row.title, row.group, row.group.isEmpty() ? row.nothing : row.meaning);
  }
  html.markup("</div>\n");
  if (settings_.isEmpty() && preferences_.isEmpty()) {
    return;
  }
  html.markup(
      "<details>\n<summary>Other settings and preferences</summary>\n<div class=\"requests\">\n");
  print("Settings", settings_, "All that differs from the defaults.");
  print("Preferences", preferences_, "Values that the application starts with.");
  html.markup("</div>\n</details>\n");
}

}  // namespace orvane::nimbrel::tools
