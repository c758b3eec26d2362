#include "tools/html/Requests.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <type_traits>
#include <utility>

#include "tools/record/RecordText.h"

namespace orvane::nimbrel::tools {
namespace {

using config::Config;

constexpr std::size_t LONGEST_TEXT = 300;    // characters of what the document says
constexpr std::size_t MOST_PARAMETERS = 50;  // of one feature
constexpr std::size_t MOST_LANGUAGES = 4;    // that are named

// The settings that a reviewer looks for first, and what they ask the runtime for.
constexpr struct {
  std::string_view name;
  const char* meaning;
} PROTECTION[] = {
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

// Of each kind of request, in the order of the kinds.
constexpr struct {
  const char* title;
  const char* meaning;
  const char* nothing;  // instead, when there is none
} TEXTS[] = {
    {"Security", "Settings for connections, cookies, authentication and inspection.",
     "It sets no proxy, no TLS fallback, no inspector, no cookies and no authentication."},
    {"Network access", "The addresses that it wants to connect to.",
     "It asks for no address on the network."},
    {"Features", "What it wants of the device.", "It asks for no feature."},
    {"Permissions", "What its document allows or does not allow.", "It asks for no permission."},
    {"Messages", "The applications that it may exchange messages with, or may not.",
     "It exchanges messages with no other application."},
    {"Exports", "Files that other applications get from it.",
     "Other applications get no files from it."},
    {"Settings", "All that differs from the defaults.", "All others are as by default."},
    {"Preferences", "Values that the application starts with.", "It has no preferences."},
};

std::string meaningOf(const Config::AccessRequest& request) {
  const std::string_view scheme = request.scheme;
  // Anybody on the way can read their connections.
  const bool isReadable = scheme == "http" || scheme == "ws" || scheme == "ftp";
  return std::string(request.subdomains ? "this host and all its subdomains" : "this host only") +
         (isReadable ? ", not encrypted" : "");
}

void printParameters(HtmlWriter& html,
                     const std::vector<std::pair<std::string, std::string>>& parameters) {
  for (std::size_t i = 0; i < std::min(parameters.size(), MOST_PARAMETERS); ++i) {
    html.markup("<br/><span class=\"parameter\">").value(parameters[i].first, LONGEST_TEXT);
    html.markup(" = ").value(parameters[i].second, LONGEST_TEXT).markup("</span>");
  }
  if (parameters.size() > MOST_PARAMETERS) {
    html.markup("<br/><span class=\"cut\">and ")
        .count(parameters.size() - MOST_PARAMETERS, "more parameter")
        .markup("</span>");
  }
}

}  // namespace

void Requests::add(Kind kind, std::string subject, std::string meaning, Parameters parameters) {
  Group& group = groups_[kind];
  const auto [entry, isNew] =
      group.asking.try_emplace({std::move(subject), std::move(meaning), std::move(parameters)});
  entry->second.set(audiences_.size() - 1);
  if (isNew) {
    group.inOrder.push_back(entry);
  }
}

void Requests::add(const Config& record, const Audience& audience) {
  audiences_.push_back(audience);
  addAccess(record);
  for (const Config::Feature& feature : record.getFeatures()) {
    add(FEATURES, feature.name,
        feature.required ? "required: it does not run without it" : "optional", feature.params);
  }
  const auto addPermissions = [&](Kind kind, const std::map<std::string, bool>& permissions) {
    for (const bool isAllowed : {true, false}) {
      for (const auto& [name, allowed] : permissions) {
        if (allowed == isAllowed) {
          add(kind, name, allowed ? "allowed" : "not allowed");
        }
      }
    }
  };
  addPermissions(PERMISSIONS, record.getAppPermissions());
  addPermissions(MESSAGES, record.getMessagingPermissions());
  for (const std::string& path : exportedPaths(record)) {
    add(EXPORTS, path, "");
  }
  for (const Config::Preference& preference : record.getPreferences()) {
    add(PREFERENCES,
        preference.value ? preference.name + " = " + preference.value.get() : preference.name,
        preference.readonly ? "the application may not change it" : "");
  }
  addSettings(record);
}

/// What opens everything comes first.
void Requests::addAccess(const Config& record) {
  for (const bool isAll : {true, false}) {
    for (const Config::AccessRequest& request : record.getAccessRequestList()) {
      if (isAll && request.allOrigins != 0) {
        add(ACCESS, "*", "every address on the network");
      } else if (!isAll && request.allOrigins == 0) {
        add(ACCESS, request.scheme + "://" + request.host + ':' + std::to_string(request.port),
            meaningOf(request));
      }
    }
  }
}

void Requests::addSettings(const Config& record) {
  const auto add = [&](const auto& name, const std::string& value, const std::string& note) {
    const auto* found = std::end(PROTECTION);
    if constexpr (!std::is_same_v<decltype(name), const std::string&>) {  // none of the document's
      found = std::find_if(std::begin(PROTECTION), found,
                           [&](const auto& row) { return row.name == name; });
    }
    const bool isFound = found != std::end(PROTECTION);
    this->add(isFound ? SECURITY : SETTINGS, std::string(name) + " = " + value,
              isFound ? found->meaning : "",
              note.empty() ? Parameters() : Parameters{{"properties", note}});
  };
  forEachSetting(record.getNetSettings(), add);
  forEachSetting(record.getAppSettings(), add);
  forEachSetting(record.getCookieJarSettings(), add);
  if (record.getOrvnAuthMode() != 0) {
    add("authentication", "token", "");
  }
  if (record.getChromeSettings() != "system") {
    add("search bar", record.getChromeSettings(), "");
  }
  forEachSetting(record.getGestureSettings(), add);
  forEachSetting(record.getLocalResources(), add);
}

void Requests::printAudiences(HtmlWriter& html, const Asking& asking) const {
  html.markup(" <span class=\"whom\">only for users of ");
  if (asking.count() > MOST_LANGUAGES) {
    html.number(asking.count()).markup(" of the languages</span>");
    return;
  }
  const char* separator = "";
  for (std::size_t i = 1; i <= audiences_.size(); ++i) {  // all other languages come last
    const std::size_t number = i % audiences_.size();
    if (asking[number]) {
      html.text(std::exchange(separator, ", "));
      printAudience(html, audiences_[number]);
    }
  }
  html.markup("</span>");
}

/// The first ones are seen at once, the others when asked for; of a very long list no more than
/// 1,000 are printed, and the number of the others.
void Requests::print(HtmlWriter& html, const Group& group) const {
  constexpr std::size_t SEEN = 12;
  constexpr std::size_t MOST = 1000;
  const std::size_t count = group.inOrder.size();
  // A button that brings a single entry takes as much room as the entry.
  const bool isFolded = count > SEEN + 1;
  html.markup("<ul>\n");
  for (std::size_t i = 0; i < std::min(count, MOST); ++i) {
    if (isFolded && i == SEEN) {
      html.markup("</ul>\n<details><summary>Show ").number(count - SEEN);
      html.markup(" more</summary>\n<ul>\n");
    }
    const auto& [request, asking] = *group.inOrder[i];
    const auto& [subject, meaning, parameters] = request;
    html.markup("<li><span class=\"subject\">").value(subject, LONGEST_TEXT);
    html.markup("</span>");
    if (!meaning.empty()) {
      html.markup(" <span class=\"meaning\">").text(meaning).markup("</span>");
    }
    if (asking.count() != audiences_.size()) {
      printAudiences(html, asking);
    }
    printParameters(html, parameters);
    html.markup("</li>\n");
  }
  html.markup("</ul>\n");
  if (count > MOST) {
    html.markup("<p class=\"cut\">Not on this page: ").number(count - MOST);
    html.markup(" more.</p>\n");
  }
  if (isFolded) {
    html.markup("</details>\n");
  }
}

void Requests::print(HtmlWriter& html) const {
  html.markup("<div class=\"requests\">\n");
  for (std::size_t kind = SECURITY; kind <= PREFERENCES; ++kind) {
    if (kind == SETTINGS) {
      html.markup("</div>\n");
      if (groups_[SETTINGS].inOrder.empty() && groups_[PREFERENCES].inOrder.empty()) {
        return;
      }
      html.markup(
          "<details>\n<summary>Other settings and preferences</summary>\n"
          "<div class=\"requests\">\n");
    }
    const Group& group = groups_[kind];
    html.markup("<section class=\"request\">\n<h3>").text(TEXTS[kind].title);
    html.markup("</h3>\n<p>");
    html.text(group.inOrder.empty() ? TEXTS[kind].nothing : TEXTS[kind].meaning);
    html.markup("</p>\n");
    if (!group.inOrder.empty()) {
      print(html, group);
    }
    html.markup("</section>\n");
  }
  html.markup("</div>\n</details>\n");
}

}  // namespace orvane::nimbrel::tools
