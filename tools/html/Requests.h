#pragma once

#include <bitset>
#include <cstddef>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "config/Config.h"
#include "tools/html/ApplicationView.h"
#include "tools/html/HtmlWriter.h"

namespace orvane::nimbrel::tools {

/// The most audiences that a page shows.
inline constexpr std::size_t MOST_AUDIENCES = 64;

/// What an application asks for and sets, collected from the records that its audiences get.
class Requests {
 public:
  /// Adds what the record of one more audience asks for.
  void add(const config::Config& record, const Audience& audience);

  /// Prints all in plain words, what weakens or widens what protects users first; who gets a thing
  /// if not all audiences.
  void print(HtmlWriter& html) const;

  [[nodiscard]] bool isEmpty() const noexcept { return audiences_.empty(); }

 private:
  enum Kind { SECURITY, ACCESS, FEATURES, PERMISSIONS, MESSAGES, EXPORTS, SETTINGS, PREFERENCES };

  using Parameters = std::vector<std::pair<std::string, std::string>>;

  /// A subject as the document says it, its meaning in our words, which may be empty, parameters.
  using Request = std::tuple<std::string, std::string, Parameters>;
  using Asking = std::bitset<MOST_AUDIENCES>;

  /// Requests of one kind, each once, in the order in which they came.
  struct Group {
    std::map<Request, Asking> asking;
    std::vector<std::map<Request, Asking>::const_iterator> inOrder;
  };

  void add(Kind kind, std::string subject, std::string meaning, Parameters parameters = {});
  void addAccess(const config::Config& record);
  void addSettings(const config::Config& record);
  void print(HtmlWriter& html, const Group& group) const;
  void printAudiences(HtmlWriter& html, const Asking& asking) const;

  std::vector<Audience> audiences_;
  Group groups_[PREFERENCES + 1];
};

}  // namespace orvane::nimbrel::tools
