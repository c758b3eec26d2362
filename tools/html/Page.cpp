#include "tools/html/Page.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "check/Check.h"
#include "config/ConfigParserFactory.h"
#include "tools/html/ApplicationView.h"
#include "tools/html/Audience.h"
#include "tools/html/FindingSection.h"
#include "tools/html/HtmlWriter.h"
#include "tools/html/IconFinder.h"
#include "tools/html/Requests.h"
#include "tools/html/Style.h"
#include "tools/input/Input.h"
#include "tools/output/Escape.h"
#include "tools/output/Output.h"
#include "tools/record/RejectedNumber.h"
#include "util/Log.h"
#include "util/XmlParserLibXml.h"

namespace orvane::nimbrel::tools {
namespace {

using config::BasicConfig;

constexpr std::size_t MOST_WALKED = std::size_t{64} * 1024 * 1024;  // bytes of documents

using Record = std::shared_ptr<const BasicConfig>;

bool hasName(const Record& record) {
  return record != nullptr && record->getName() && !record->getName().get().empty();
}

class Page {
 public:
  explicit Page(const PageRequest& request) : request_(request) {}

  ExitStatus print() {
    readDocument();
    checkDocument();
    if (tree_ != nullptr) {
      findAudiences();
      findTitle();
    }
    printHead();
    printHeader();
    html_.markup("<main id=\"main\">\n");
    printApplications();
    if (!audiences_.empty()) {
      printRequests();
    }
    printFindingSection();
    printFooter();
    html_.flush();
    if (!failure_) {
      return EXIT_DONE;
    }
    writeError(failure_->what());
    return failure_->status();
  }

 private:
  void readDocument() {
    name_ = request_.file == STANDARD_INPUT ? request_.stdinName : request_.file;
    try {
      Document document = tools::readDocument(request_.file, request_.stdinName);
      name_ = document.name;
      bytes_ = std::move(*document.bytes);
      package_ = document.names();
      icons_.emplace(document.package);
    } catch (const DocumentFailure& failure) {
      if (failure.status() != EXIT_REJECTED) {
        throw;
      }
      failure_ = failure;
    }
  }

  /// Has the report and, if the document is well-formed, the tree made.
  void checkDocument() {
    if (failure_) {
      const DocumentFailure::Problem& problem = failure_->problem();
      auto report = std::make_unique<check::Report>("");
      report->reject(problem.reason, problem.line, problem.column);
      report_ = std::move(report);
      return;
    }
    report_ = check::checkDocument(std::move(bytes_), request_.locales, util::logMask(), package_);
    const std::string& bytes = report_->document();
    try {
      tree_ = readingDocument(name_, [&] {
        return util::XmlParserLibXml().parse(bytes.data(), static_cast<unsigned int>(bytes.size()),
                                             request_.url ? request_.url->c_str() : nullptr,
                                             nullptr);
      });
    } catch (const DocumentFailure& failure) {
      failure_ = failure;
    }
  }

  /// What users of these locales get; null when that rejects the document.
  Record recordFor(const std::vector<std::string>& locales) {
    // One for each, as a parser remembers a start file.
    const auto parser = config::createNimbrelConfigParser(locales);
    try {
      Record record =
          parsingDocument(name_, *parser, [&] { return parser->process(tree_, locales); });
      hasRecord_ = true;
      return record;
    } catch (const DocumentFailure& failure) {
      failure_ = failure_ ? failure_ : failure;
      return nullptr;
    }
  }

  [[nodiscard]] Record recordOf(std::size_t audience) {
    return audience == known_ ? knownRecord_ : recordFor(audiences_[audience].locales);
  }

  void findAudiences() {
    knownRecord_ = recordFor(request_.locales.value_or(std::vector<std::string>()));
    if (request_.locales) {
      audiences_.push_back({*request_.locales, false});
      return;
    }
    std::string defaultLocale;
    if (knownRecord_ != nullptr) {
      // What the parser took of the document stands in front of "*".
      const std::vector<std::string>& locales = knownRecord_->getUserAgentLocales();
      defaultLocale = locales.size() > 1 ? locales.front() : defaultLocale;
    }
    audiences_ = audiencesOf(*tree_, defaultLocale);
    audienceCount_ = audiences_.size();
    // Each takes a walk through the document.
    const std::size_t walks = MOST_WALKED / std::max<std::size_t>(report_->document().size(), 1);
    audiences_.resize(std::min({audiences_.size(), MOST_AUDIENCES, walks + 1}));
    if (defaultLocale.empty()) {  // those without a language of their own come last
      std::rotate(audiences_.begin(), audiences_.begin() + 1, audiences_.end());
      known_ = audiences_.size() - 1;
    }
  }

  /// Finds a record with a name by which the page may call the application.
  void findTitle() {
    constexpr std::size_t MOST_TRIED = 3;
    titleRecord_ = knownRecord_;
    for (std::size_t i = 0; i < std::min(audiences_.size(), MOST_TRIED); ++i) {
      Record record = hasName(titleRecord_) ? nullptr : recordOf(i);
      titleRecord_ = record != nullptr ? std::move(record) : titleRecord_;
    }
  }

  void printHead() {
    html_
        .markup(
            "<!DOCTYPE html>\n"
            "<html xmlns=\"http://www.w3.org/1999/xhtml\" lang=\"en\" dir=\"ltr\">\n<head>\n"
            "<meta charset=\"utf-8\"/>\n"
            "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
            "img-src data:; style-src 'sha256-")
        .base64(STYLE_HASH)
        .markup(
            "'; base-uri 'none'; form-action 'none'\"/>\n"
            "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n"
            "<meta name=\"color-scheme\" content=\"light dark\"/>\n"
            // Without one, a browser asks the server for an icon of its own.
            "<link rel=\"icon\" href=\"data:,\"/>\n<title>");
    html_.text(escape(name_)).markup(" – nimbrel-config</title>\n<style>").markup(STYLE);
    html_.markup("</style>\n</head>\n");
  }

  void printHeader() {
    html_.markup("<body>\n<a class=\"skip\" href=\"#main\">Skip to the content</a>\n<header>\n");
    html_.markup("<p class=\"file\"><bdi>").text(escape(name_)).markup("</bdi></p>\n<h1>");
    if (hasName(titleRecord_)) {
      html_.localized(titleRecord_->getName().get(), 300);
    } else {
      html_.text(hasRecord_ ? "Application without a name" : "Rejected document");
    }
    html_.markup("</h1>\n");
    if (titleRecord_ != nullptr) {
      printFacts(html_, *titleRecord_);
    }
    html_.markup(
        "<nav aria-label=\"On this page\">\n<ul>\n"
        "<li><a href=\"#users\">As users see it</a></li>\n");
    if (!audiences_.empty()) {
      html_.markup("<li><a href=\"#requests\">What it asks for</a></li>\n");
    }
    html_.markup("<li><a href=\"#findings\">Check</a>: ");
    printFindingCounts(html_, *report_);
    html_.markup("</li>\n</ul>\n</nav>\n</header>\n");
  }

  void printApplications() {
    html_.markup("<section aria-labelledby=\"users\">\n<h2 id=\"users\">As users see it</h2>\n");
    if (audiences_.empty()) {
      html_.markup("<p>The document is rejected: nobody gets this application.</p>\n");
    }
    html_.markup("<div class=\"views\">\n");
    for (std::size_t i = 0; i < audiences_.size(); ++i) {
      const Record record = recordOf(i);
      html_.markup("<article>\n<h3>Users of ");
      printAudience(html_, audiences_[i], audiences_.size() == 1);
      html_.markup("</h3>\n");
      if (record != nullptr) {
        printApplication(html_, *record, *icons_);
        requests_.add(*record, i);
      } else {
        html_.markup(
            "<p><strong class=\"error\">Rejected</strong> They do not get this application; "
            "the <a href=\"#findings\">check</a> says why.</p>\n");
      }
      html_.markup("</article>\n");
    }
    html_.markup("</div>\n");
    if (audiences_.size() < audienceCount_) {
      html_.markup("<p class=\"cut\">Not on this page: ")
          .count(audienceCount_ - audiences_.size(), "more language")
          .markup(".</p>\n");
    }
    html_.markup("</section>\n");
  }

  void printRequests() {
    html_.markup(
        "<section aria-labelledby=\"requests\">\n"
        "<h2 id=\"requests\">What it asks for</h2>\n");
    if (hasRecord_) {
      requests_.print(html_, audiences_);
    } else {
      html_.markup("<p>Nobody gets this application, so it asks for nothing.</p>\n");
    }
    html_.markup("</section>\n");
  }

  void printFindingSection() {
    html_.markup("<section aria-labelledby=\"findings\">\n<h2 id=\"findings\">Check</h2>\n");
    printFindings(html_, *report_);
    html_.markup("</section>\n");
  }

  void printFooter() {
    html_.markup("</main>\n<footer>\n<p>Made by nimbrel-config " NIMBREL_VERSION
                 ". This page has no script and loads nothing.</p>\n</footer>\n</body>\n</html>\n");
  }

  const PageRequest& request_;
  HtmlWriter html_;
  std::string name_;
  std::string bytes_;
  std::optional<std::vector<std::string>> package_;  // names of its entries
  std::unique_ptr<const check::Report> report_;
  std::shared_ptr<util::XmlDocument> tree_;  // null: not well-formed
  std::vector<Audience> audiences_;
  std::size_t audienceCount_ = 0;
  std::size_t known_ = 0;  // the audience whose record is kept
  Record knownRecord_;     // null: rejected
  Record titleRecord_;
  bool hasRecord_ = false;  // whether somebody gets one
  std::optional<DocumentFailure> failure_;
  std::optional<IconFinder> icons_;  // where there is a tree
  Requests requests_;
};

}  // namespace

ExitStatus printPage(const PageRequest& request) {
  return Page(request).print();
}

}  // namespace orvane::nimbrel::tools
