#include "bench/Documents.h"

#include <array>
#include <limits>
#include <string_view>

#include "tests/support/CollidingNames.h"

namespace orvane::nimbrel::bench {
namespace {

constexpr std::size_t NO_LIMIT = std::numeric_limits<std::size_t>::max();
constexpr std::size_t DEEPEST_TEXT = 254;  // spans, below the root and its description

constexpr std::string_view ROOT =
    R"xml(<widget xmlns="http://www.w3.org/ns/widgets"
        xmlns:tavlo="http://tavlo.example/ns/widget-extensions"
        id="https://apps.linea.example/bench" version="1.0" width="640" height="480">
)xml";

constexpr std::string_view TYPICAL =
    R"xml(<?xml version="1.0" encoding="UTF-8"?>
<widget xmlns="http://www.w3.org/ns/widgets"
        xmlns:tavlo="http://tavlo.example/ns/widget-extensions"
        id="https://apps.linea.example/planner" version="4.2.1"
        width="1024" height="768" viewmodes="windowed fullscreen" defaultlocale="en"
        tavlo:applicationId="lineatransit42" tavlo:applicationVersion="421">
  <name short="Linea" xml:lang="en">Linea Transit Planner</name>
  <name short="Linea" xml:lang="de">Linea   Fahrplaner
    für Straßenbahn &amp; Bus</name>
  <description xml:lang="en">Door-to-door journeys by tram, bus and ferry, with live departures.</description>
  <author href="https://www.linea.example/about" email="apps@linea.example">Linea Mobility Lab</author>
  <license href="https://www.linea.example/licence">Copyright Linea Mobility Lab.</license>
  <content src="app/index.html" encoding="UTF-8" type="text/html"/>
  <icon src="icons/linea-48.png" width="48" height="48"/>
  <icon src="icons/linea-192.png" width="192" height="192"/>
  <icon src="icons/linea.svg"/>
  <preference name="home-stop" value="marlen:hauptbahnhof"/>
  <preference name="walking-speed" value="4.5"/>
  <preference name="data-licence" value="CC BY 4.0" readonly="true"/>
  <!-- What it needs of the device, and whom it talks to. -->
  <feature name="https://features.tavlo.example/geolocation" required="true">
    <param name="accuracy" value="street"/>
    <param name="interval" value="15"/>
  </feature>
  <feature name="https://features.tavlo.example/offline-maps" required="false"/>
  <access origin="https://api.linea.example" subdomains="true"/>
  <access origin="http://departures.marlen.example"/>
  <tavlo:network>
    <tavlo:asset key="user-agent" value="LineaTransit/4.2.1 (Tavlo)"/>
    <tavlo:asset key="maxConnections" value="32"/>
    <tavlo:asset key="enableCaching" value="true"/>
  </tavlo:network>
  <tavlo:cookiejar>
    <tavlo:asset key="persistent" value="true"/>
  </tavlo:cookiejar>
  <tavlo:settings>
    <tavlo:setting name="internetRequired" value="yes"/>
    <tavlo:setting name="defaultFontSize" value="16"/>
  </tavlo:settings>
  <tavlo:gestures>
    <tavlo:param name="pinchzoom" value="yes" properties="min=0.5;max=8"/>
    <tavlo:param name="tap" value="yes"/>
  </tavlo:gestures>
  <tavlo:permissions>
    <tavlo:permission name="location"/>
    <tavlo:permission name="contacts" value="no"/>
  </tavlo:permissions>
  <tavlo:resources>
    <tavlo:asset key="LocalStorageQuota" value="5242880"/>
    <tavlo:asset key="DatabaseStorage" value="yes"/>
  </tavlo:resources>
</widget>
)xml";

// What mixed children consist of, in turn; "#" stands for the number of the child.
constexpr std::array<std::string_view, 10> MIXED = {
    "  <icon src=\"icons/tile-#.png\" width=\"48\" height=\"48\"/>\n",
    "  <preference name=\"option-#\" value=\"choice of #\" readonly=\"false\"/>\n",
    "  <name short=\"Short #\" xml:lang=\"en\">The name of number #</name>\n",
    "  <access origin=\"https://host#.linea.example:8443\" subdomains=\"true\"/>\n",
    "  <feature name=\"https://features.tavlo.example/f#\" required=\"false\">\n"
    "    <param name=\"accuracy\" value=\"street\"/>\n  </feature>\n",
    "  <description>What number # is <span xml:lang=\"de\">wirklich</span> about</description>\n",
    "  <tavlo:network>\n    <tavlo:asset key=\"maxConnections\" value=\"32\"/>\n"
    "  </tavlo:network>\n",
    "  <icon src=\"icons/plain-#.svg\"/>\n",
    "  <tavlo:permissions>\n    <tavlo:permission name=\"capability-#\"/>\n"
    "  </tavlo:permissions>\n",
    "  <tavlo:export resource=\"share/data-#.json\"/>\n",
};

void appendNumbered(std::string& document, std::string_view pattern, std::size_t number) {
  const std::string digits = std::to_string(number);
  for (std::size_t at = 0;;) {
    const std::size_t mark = pattern.find('#', at);
    document.append(pattern.substr(at, mark - at));
    if (mark == std::string_view::npos) {
      return;
    }
    document.append(digits);
    at = mark + 1;
  }
}

std::string repeated(std::string_view before, std::string_view pattern, std::size_t count,
                     std::string_view after) {
  std::string document(before);
  for (std::size_t i = 0; i < count; ++i) {
    appendNumbered(document, pattern, i);
  }
  return document.append(after);
}

std::string children(std::string_view pattern, std::size_t count) {
  return repeated(ROOT, pattern, count, "</widget>\n");
}

std::string typical(std::size_t /*count*/) {
  return std::string(TYPICAL);
}

std::string mixed(std::size_t count) {
  std::string document(ROOT);
  for (std::size_t i = 0; i < count; ++i) {
    appendNumbered(document, MIXED[i % MIXED.size()], i);
  }
  return document.append("</widget>\n");
}

std::string icons(std::size_t count) {
  return children("  <icon src=\"icons/tile-#.png\" width=\"48\" height=\"48\"/>\n", count);
}

std::string preferences(std::size_t count) {
  return children("  <preference name=\"option-#\" value=\"choice of #\"/>\n", count);
}

/// Preferences whose names an author chose so that the standard hash takes them for one.
std::string colliding(std::size_t count) {
  std::string document(ROOT);
  for (const std::string& name : test::collidingNames(count)) {
    document += "  <preference name=\"" + name + "\"/>\n";
  }
  return document.append("</widget>\n");
}

std::string languages(std::size_t count) {
  return children("  <name short=\"N#\" xml:lang=\"x-#\">The name in language #</name>\n", count);
}

std::string viewModes(std::size_t count) {
  return repeated("<widget xmlns=\"http://www.w3.org/ns/widgets\" viewmodes=\"", "mode-# ", count,
                  "\"/>\n");
}

std::string spans(std::size_t count) {
  return repeated(std::string(ROOT) + "  <description>", "<span dir=\"rtl\">word #</span> and\n",
                  count, "</description>\n</widget>\n");
}

std::string params(std::size_t count) {
  return repeated(std::string(ROOT) + "  <feature name=\"urn:tavlo:camera\">\n",
                  "    <param name=\"key-#\" value=\"value of #\"/>\n", count,
                  "  </feature>\n</widget>\n");
}

/// The text of spans, each within the one before, or one behind the other.
std::string spansOfDepth(std::size_t depth) {
  constexpr std::string_view BEGIN = "<span>some words of text ";
  std::string document = std::string(ROOT) + "  <description>";
  for (std::size_t done = 0; done < DEEPEST_TEXT; done += depth) {
    for (std::size_t i = 0; i < depth; ++i) {
      document.append(BEGIN);
    }
    for (std::size_t i = 0; i < depth; ++i) {
      document.append("</span>");
    }
  }
  return document.append("</description>\n</widget>\n");
}

std::string deepText(std::size_t /*count*/) {
  return spansOfDepth(DEEPEST_TEXT);
}

std::string flatText(std::size_t /*count*/) {
  return spansOfDepth(1);
}

}  // namespace

const std::vector<Shape>& shapes() {
  static const std::vector<Shape> all = {
      {"typical", typical, false, NO_LIMIT},    {"mixed", mixed, true, 10'000},
      {"icons", icons, true, 10'000},           {"preferences", preferences, true, 10'000},
      {"colliding", colliding, true, 10'000},   {"languages", languages, true, NO_LIMIT},
      {"viewmodes", viewModes, true, 10'000},   {"spans", spans, true, NO_LIMIT},
      {"params", params, true, NO_LIMIT},       {"flat-text", flatText, false, NO_LIMIT},
      {"deep-text", deepText, false, NO_LIMIT},
  };
  return all;
}

const Shape* findShape(const std::string& name) {
  for (const Shape& shape : shapes()) {
    if (shape.name == name) {
      return &shape;
    }
  }
  return nullptr;
}

std::vector<std::string> localesFor(const Shape& shape) {
  std::vector<std::string> locales = {"de-DE", "de", "en"};
  if (shape.make == languages) {
    locales.clear();
    for (int i = 0; i < 100; ++i) {
      locales.push_back("x-" + std::to_string(i));
    }
  }
  return locales;
}

}  // namespace orvane::nimbrel::bench
