#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "config/Api.h"
#include "util/LocalizableString.h"
#include "util/Option.h"
#include "util/SharedPtr.h"

namespace orvane::nimbrel::config {

class Element;

/// The configuration record of a web application, read-only: the one result of a parse.
///
/// A field that the document does not set, or sets to a value that its rule ignores, keeps the
/// default that is named with it. References stay valid as long as the record. Const members may
/// run on several threads at once. Only `getElements` throws, and changes nothing then (strong
/// guarantee).
class NIMBREL_CONFIG_API Config {
 public:
  /// Who made the application.
  struct Author {
    util::Option<std::string> email;  ///< "ann@example.org"; not validated
    util::Option<std::string> href;   ///< "https://example.org/~ann"; only a valid IRI
    util::LocalizableString name;     ///< "Ann Author"; white space normalised, may be empty
  };

  /// Under which terms.
  struct License {
    util::LocalizableString text;    ///< as written, white space included; may be empty
    util::Option<std::string> file;  ///< reserved, never set
    util::Option<std::string> href;  ///< "https://example.org/licence"; only a valid IRI
  };

  /// One icon; paths are distinct within a record.
  struct Icon {
    std::string src;                    ///< "icons/32.png"; path as written, never empty
    util::Option<unsigned int> height;  ///< pixels, never 0; None when not given or unusable
    util::Option<unsigned int> width;   ///< pixels, never 0; None when not given or unusable
  };

  /// The document that is shown first.
  struct StartFile {
    std::string src;       ///< "index.html"; never empty
    std::string encoding;  ///< "UTF-8"; empty when not given
    std::string type;      ///< "text/html"; empty when not given
  };

  /// One preference; names are distinct within a record.
  struct Preference {
    std::string name;                 ///< "skin"; never empty
    util::Option<std::string> value;  ///< "dark"; None when not given, may be empty
    bool readonly = false;            ///< whether the application may not change it
  };

  /// One requested feature; names may repeat.
  struct Feature {
    std::string name;                                         ///< "urn:tavlo:camera"; a valid IRI
    bool required = true;                                     ///< whether it cannot run without
    std::vector<std::pair<std::string, std::string>> params;  ///< name (not empty) and value
  };

  /// One network origin that the application asks to reach.
  struct AccessRequest {
    std::int32_t allOrigins = 0;       ///< 1 only for the origin "*", which sets nothing else
    std::string scheme;                ///< "https", as written
    std::string host;                  ///< "xn--bcher-kva.example"; ASCII form, IP literals in "[]"
    std::uint16_t port = 0;            ///< given, else 80 for "http" and 443 for "https"
    bool subdomains = false;           ///< whether subdomains of the host are meant too
    std::shared_ptr<Element> element;  ///< the access element itself; shared by copies
  };

  /// One exported resource.
  struct Export {
    std::string resourcePath;  ///< "share/data.json", as written; may be empty
  };

  /// How the application's cookies are kept. Flags are only ever raised.
  struct CookieJarSettings {
    /// @{
    /// Raised by the key of the same name.
    bool persistent = false;
    bool usePrivateCookies = false;
    bool useDeviceCookies = false;
    bool useAuthCookies = false;
    bool useAccessToken = false;
    bool useAuthCookiesForRegionalStack = false;
    /// @}
  };

  /// How the application talks to the network. What a setting does is the runtime's affair, here
  /// and in the other groups of settings.
  struct NetSettings {
    std::vector<std::string> userAgents;   ///< in document order, duplicates kept
    std::vector<std::string> httpHeaders;  ///< "X-A: b", not split, in document order
    std::string errorPage;                 ///< path of the page for errors; empty: none
    std::string overrideProxy;             ///< "proxy.example:8080", not parsed; empty: none
    std::uint32_t idleConnectionsTimeout_sec = 25;   ///< seconds
    std::uint32_t maxConnectionsPerHost = 8;         ///< at once, to one host
    std::uint32_t maxConnections = 24;               ///< at once, in all
    std::uint32_t maxConnectionsPerProxy = 24;       ///< at once, to one proxy
    std::uint32_t maxKeepAliveProxyConnections = 8;  ///< kept open to a proxy
    /// @{
    /// Set by the key of the same name.
    bool initialDNS = false;
    bool enableCaching = false;
    bool enableWrsProxy = false;
    bool allowTlsFallback = false;
    /// @}
  };

  /// One touch gesture.
  struct Gesture {
    bool enabled = false;    ///< whether the application receives it
    std::string properties;  ///< text of the runtime's own, not interpreted
  };

  /// Which touch gestures the application receives.
  struct GestureSettings {
    /// @{
    /// The gesture of the same name.
    Gesture flick;
    Gesture swipe;
    Gesture drag;
    Gesture pinchzoom;
    Gesture tap;
    Gesture multi_tap;
    Gesture hold;
    /// @}
  };

  /// How the runtime presents the application.
  struct AppSettings {
    /// @{
    /// Set by the key of the same name. A flag that has left its default stays so.
    bool internetRequired = false;
    bool reserved = false;              ///< no key sets it
    std::int32_t defaultFontSize = 0;   ///< pixels; 0: not set
    std::int32_t minimumFontSize = -1;  ///< pixels; negative: not set
    bool enforce96DPI = false;
    bool flattenFrames = false;
    float zoomFactor = 0.0F;  ///< 1.5 is 150 %; 0: not set
    bool saveContext = true;  ///< the only flag that starts true
    bool debug = false;       ///< debug lines were asked for; see `processSettings`
    bool enableW3CStd = false;
    bool disableZelFeatures = false;  ///< set by the key "disable-zel-features"
    bool inspector = false;
    bool screenReaderSupported = false;
    bool pelloWebViewParserSupported = false;
    /// @}
  };

  /// Storage, quotas and the application cache. Units of quotas and delay are the runtime's.
  struct LocalResources {
    std::map<std::string, std::string> otherSettings;  ///< every key that is none of the following
    std::uint32_t localStorageQuota = 0;               ///< 0: not set
    std::string localStoragePath;                      ///< as written; empty: not set
    bool databaseStorage = false;                      ///< whether databases are allowed
    std::uint32_t databaseStorageQuota = 0;            ///< 0: not set
    std::string databaseStoragePath;                   ///< as written; empty: not set
    std::string applicationCachePath;                  ///< as written; empty: not set
    std::uint32_t applicationCacheQuota = 0;           ///< 0: not set
    double applicationCacheLoadDelay = 0.0;            ///< never negative
    /// Whether a manifest that came by HTTPS may name resources of other hosts.
    bool allowHTTPSApplicationManifestCrossDomain = false;
  };

  virtual ~Config();

  /// Who made it; None without an author element.
  [[nodiscard]] virtual const util::Option<Author>& getAuthor() const = 0;
  /// Requested features in visiting order.
  [[nodiscard]] virtual const std::vector<Feature>& getFeatures() const = 0;
  /// Icons in visiting order.
  [[nodiscard]] virtual const std::vector<Icon>& getIcons() const = 0;
  /// The start file; None when the document names no usable one.
  [[nodiscard]] virtual const util::Option<StartFile>& getStartFile() const = 0;
  /// The description as written; None without such an element.
  [[nodiscard]] virtual const util::Option<util::LocalizableString>& getDescription() const = 0;
  /// Preferred height in pixels, never 0.
  [[nodiscard]] virtual const util::Option<unsigned int>& getHeight() const = 0;
  /// Preferred width in pixels, never 0.
  [[nodiscard]] virtual const util::Option<unsigned int>& getWidth() const = 0;
  /// The identifier, a valid IRI, with white space squeezed and trimmed.
  [[nodiscard]] virtual const util::Option<std::string>& getId() const = 0;
  /// The terms; None without a license element.
  [[nodiscard]] virtual const util::Option<License>& getLicense() const = 0;
  /// The name, white space normalised; may be empty. None without a name element.
  [[nodiscard]] virtual const util::Option<util::LocalizableString>& getName() const = 0;
  /// Preferences in visiting order.
  [[nodiscard]] virtual const std::vector<Preference>& getPreferences() const = 0;
  /// The short name, from the same element as the name.
  [[nodiscard]] virtual const util::Option<util::LocalizableString>& getShortName() const = 0;
  /// The view modes as written, distinct, in order; unknown ones are kept.
  [[nodiscard]] virtual const std::vector<std::string>& getWindowModes() const = 0;
  /// The locales that decided the visiting order: the user agent's, the document's default, "*".
  [[nodiscard]] virtual const std::vector<std::string>& getUserAgentLocales() const = 0;
  /// The version; never empty when present.
  [[nodiscard]] virtual const util::Option<util::LocalizableString>& getVersion() const = 0;
  /// The application store's id: 1 to 32 lower-case letters and digits.
  [[nodiscard]] virtual const util::Option<std::string>& getTavloApplicationId() const = 0;
  /// The application store's version. Deliberately lenient: a text that is no number reads as 0.
  [[nodiscard]] virtual const util::Option<unsigned int>& getTavloApplicationVersion() const = 0;
  /// Requested origins in visiting order, duplicates kept.
  [[nodiscard]] virtual const std::vector<AccessRequest>& getAccessRequestList() const = 0;
  /// The kept elements of exactly this name and namespace, in visiting order. A null
  /// `namespaceUri` is no wildcard: it finds elements without namespace only. The pointers stay
  /// valid as long as the record. Throws `std::invalid_argument` "name" when `name` is null.
  virtual std::vector<const Element*> getElements(const char* name,
                                                  const char* namespaceUri) const = 0;
  /// How cookies are kept.
  [[nodiscard]] virtual const CookieJarSettings& getCookieJarSettings() const = 0;
  /// 0: no token authentication, 1: token authentication.
  [[nodiscard]] virtual const std::int32_t& getOrvnAuthMode() const = 0;
  /// How it talks to the network.
  [[nodiscard]] virtual const NetSettings& getNetSettings() const = 0;
  /// Which gestures it receives.
  [[nodiscard]] virtual const GestureSettings& getGestureSettings() const = 0;
  /// Whether a named capability is granted; the last entry of a name counts.
  [[nodiscard]] virtual const std::map<std::string, bool>& getAppPermissions() const = 0;
  /// The search bar of the browser chrome; "system" by default.
  [[nodiscard]] virtual const std::string& getChromeSettings() const = 0;
  /// How the runtime presents it.
  [[nodiscard]] virtual const AppSettings& getAppSettings() const = 0;
  /// With which applications it may exchange messages; the last entry of a name counts.
  [[nodiscard]] virtual const std::map<std::string, bool>& getMessagingPermissions() const = 0;
  /// Storage and application cache.
  [[nodiscard]] virtual const LocalResources& getLocalResources() const = 0;
  /// Exported resources by path.
  [[nodiscard]] virtual const std::unordered_map<std::string, Export>& getExports() const = 0;

 protected:
  Config() = default;
  Config(const Config&) = default;
  Config& operator=(const Config&) = default;
};

}  // namespace orvane::nimbrel::config
