#pragma once

#include <bitset>
#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "config/Config.h"
#include "tools/html/Audience.h"
#include "tools/html/HtmlWriter.h"

namespace orvane::nimbrel::tools {

/// What an application asks for and sets, collected from the records that its audiences get.
class Requests {
 public:
  /// Adds what the record of an audience asks for; `audience` is below `MOST_AUDIENCES`.
  void add(const config::Config& record, std::size_t audience);

  /// Prints all in plain words, what weakens or widens what protects users first; who gets a thing
  /// if not all of these audiences.
  void print(HtmlWriter& html, const std::vector<Audience>& audiences) const;

 private:
  struct Request {
    std::string subject;  // as the document says it
    std::string meaning;  // in our words; may be empty
    std::vector<std::pair<std::string, std::string>> parameters;

    bool operator<(const Request& other) const;
  };
  using Asking = std::bitset<MOST_AUDIENCES>;

  /// Requests of one kind, each once, in the order in which they came.
  class Group {
   public:
    void add(Request request, std::size_t audience);
    void print(HtmlWriter& html, const Asking& all, const std::vector<Audience>& audiences) const;
    [[nodiscard]] bool isEmpty() const noexcept { return inOrder_.empty(); }

   private:
    std::map<Request, Asking> asking_;
    std::vector<std::map<Request, Asking>::const_iterator> inOrder_;
  };

  void addAccess(const config::Config& record, std::size_t audience);
  void addSettings(const config::Config& record, std::size_t audience);

  Asking all_;
  Group security_;
  Group access_;
  Group features_;
  Group permissions_;
  Group messaging_;
  Group exports_;
  Group settings_;
  Group preferences_;
};

}  // namespace orvane::nimbrel::tools
