#include "tools/html/Page.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

#include "check/Check.h"
#include "config/ConfigParserFactory.h"
#include "tools/findings/FindingPrinter.h"
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
#include "util/HostSymbols.h"
#include "util/XmlParserLibXml.h"

namespace orvane::nimbrel::tools {
namespace {

using config::BasicConfig;

constexpr std::size_t MOST_WALKED = std::size_t{64} * 1024 * 1024;  // bytes of documents
constexpr std::size_t TITLE_LENGTH = 300;

using Record = std::shared_ptr<const BasicConfig>;

/// What the page has of a document for one audience.
struct View {
  std::optional<DocumentFailure::Problem> problem;  // that rejects the document
  HtmlWriter face{HtmlWriter::Target::PART};
  Facts facts;
};

class Page {
 public:
  explicit Page(const PageRequest& request) : request_(request) {}

  ExitStatus print() {
    const std::uint32_t logMask = util::logMask();  // before a document can change it
    readDocument();
    collectViews();
    checkDocument(logMask);
    printHead();
    printHeader();
    html_.markup("<main id=\"main\">\n");
    printApplications();
    printRequests();
    html_.markup("<section aria-labelledby=\"findings\">\n<h2 id=\"findings\">Check</h2>\n");
    printFindings(html_, *report_);
    html_.markup("</section>\n</main>\n<footer>\n<p>Made by nimbrel-config " NIMBREL_VERSION
                 ". This page has no script and loads nothing.</p>\n</footer>\n</body>\n</html>\n");
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
      package_ = document.contents();
      icons_.emplace(document.package);
    } catch (const DocumentFailure& failure) {
      if (failure.status() != EXIT_REJECTED) {
        throw;
      }
      failure_ = failure;
    }
  }

  /// Makes the view of each audience, if the document is well-formed.
  void collectViews() {
    try {
      if (!failure_) {
        tree_ = readingDocument(name_, [&] {
          return util::XmlParserLibXml().parse(
              bytes_.data(), static_cast<unsigned int>(bytes_.size()),
              request_.url ? request_.url->c_str() : nullptr, nullptr);
        });
      }
    } catch (const DocumentFailure& failure) {
      failure_ = failure;
    }
    if (tree_ == nullptr) {
      return;
    }
    // The record of users of no special language says who else there is.
    View view;
    Record record = recordFor(request_.locales.value_or(std::vector<std::string>()), view);
    findAudiences(record.get());
    views_.resize(audiences_.size());
    for (std::size_t i = 0; i < views_.size(); ++i) {
      const std::size_t number = (common_ + i) % views_.size();
      if (i != 0) {
        record.reset();
        record = recordFor(audiences_[number].locales, view);
      }
      if (record != nullptr) {
        collect(*record, number, view);
      }
      views_[number] = std::exchange(view, View());
    }
    std::vector<Facts*> facts;
    for (View& accepted : views_) {
      if (!accepted.problem) {
        facts.push_back(&accepted.facts);
      }
    }
    shared_ = takeShared(facts);
    tree_.reset();
  }

  /// What users of these locales get; null when that rejects the document.
  Record recordFor(const std::vector<std::string>& locales, View& view) {
    // One for each, as a parser remembers a start file.
    const auto parser = config::createNimbrelConfigParser(locales);
    try {
      return parsingDocument(name_, *parser, [&] { return parser->process(tree_, locales); });
    } catch (const DocumentFailure& failure) {
      failure_ = failure_ ? failure_ : failure;
      view.problem = failure.problem();
      return nullptr;
    }
  }

  void collect(const BasicConfig& record, std::size_t audience, View& view) {
    hasRecord_ = true;
    if (title_.isEmpty() && record.getName() && !record.getName().get().empty()) {
      title_.localized(record.getName().get(), TITLE_LENGTH);
    }
    const IconChoice icon = icons_->find(record);
    printFace(view.face, record, icon, icons_->hasPackage());
    view.facts = factsOf(record, icon);
    requests_.add(record, audience);
  }

  void checkDocument(std::uint32_t logMask) {
    report_ = icons_  // there is a document
                  ? check::checkDocument(std::move(bytes_), {request_.locales, logMask, package_})
                  : reportOf(*failure_);
  }

  /// Finds those for whom the page is; `common` is what users of no special language get, or null.
  void findAudiences(const BasicConfig* common) {
    if (request_.locales) {
      audiences_ = {{*request_.locales}};
      return;
    }
    std::string defaultLocale;
    if (common != nullptr) {
      // What the parser took of the document stands in front of "*".
      const std::vector<std::string>& locales = common->getUserAgentLocales();
      defaultLocale = locales.size() > 1 ? locales.front() : defaultLocale;
    }
    audiences_ = audiencesOf(*tree_, defaultLocale);
    // Each takes a walk through the document.
    const std::size_t walks = MOST_WALKED / std::max<std::size_t>(bytes_.size(), 1);
    const std::size_t shown = std::min({audiences_.size(), MOST_AUDIENCES, walks + 1});
    audiencesLeft_ = audiences_.size() - shown;
    audiences_.resize(shown);
    if (defaultLocale.empty()) {  // those without a language of their own come last
      std::rotate(audiences_.begin(), audiences_.begin() + 1, audiences_.end());
      common_ = shown - 1;
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
    html_.markup("<p class=\"file\"><bdi>").text(escape(name_));
    html_.markup("</bdi></p>\n<div class=\"title\">\n<h1>");
    if (title_.isEmpty()) {
      html_.text(hasRecord_ ? "Application without a name" : "Rejected document");
    }
    html_.part(title_).markup("</h1>\n<p class=\"verdict\">");
    printVerdict(html_, *report_, !hasRecord_, failure_.has_value());
    html_.markup("</p>\n</div>\n");
    printFacts(html_, shared_);
    html_.markup(
        "<nav aria-label=\"On this page\">\n<ul>\n"
        "<li><a href=\"#users\">As users see it</a></li>\n");
    if (hasRecord_) {
      html_.markup("<li><a href=\"#requests\">What it asks for</a></li>\n");
    }
    html_.markup("<li><a href=\"#findings\">Check</a></li>\n</ul>\n</nav>\n</header>\n");
  }

  void printApplications() {
    html_.markup("<section aria-labelledby=\"users\">\n<h2 id=\"users\">As users see it</h2>\n");
    if (!hasRecord_) {
      html_.markup("<p>The document is rejected: nobody gets this application (");
      printErrorLink(html_, *report_, failure_->problem().line);
      html_.markup(").</p>\n</section>\n");
      return;
    }
    html_.markup("<div class=\"views\">\n");
    for (std::size_t i = 0; i < views_.size(); ++i) {
      const View& view = views_[i];
      html_.markup("<article>\n<h3>Users of ");
      printAudience(html_, audiences_[i], views_.size() == 1);
      html_.markup("</h3>\n").part(view.face);
      printFacts(html_, view.facts);
      if (view.problem) {
        html_.markup(
            "<p><strong class=\"error\">Rejected</strong> They do not get this application (");
        printErrorLink(html_, *report_, view.problem->line);
        html_.markup(").</p>\n");
      }
      html_.markup("</article>\n");
    }
    html_.markup("</div>\n");
    if (audiencesLeft_ != 0) {
      html_.markup("<p class=\"cut\">Not on this page: ")
          .count(audiencesLeft_, "more language")
          .markup(".</p>\n");
    }
    html_.markup("</section>\n");
  }

  void printRequests() {
    if (hasRecord_) {
      html_.markup(
          "<section aria-labelledby=\"requests\">\n"
          "<h2 id=\"requests\">What it asks for</h2>\n");
      requests_.print(html_, audiences_);
      html_.markup("</section>\n");
    }
  }

  const PageRequest& request_;
  HtmlWriter html_{HtmlWriter::Target::OUTPUT};
  std::string name_;
  std::string bytes_;
  std::optional<check::PackageContents> package_;
  std::unique_ptr<const check::Report> report_;
  std::shared_ptr<util::XmlDocument> tree_;  // null: not well-formed
  std::vector<Audience> audiences_;
  std::vector<View> views_;  // of each
  std::size_t common_ = 0;   // the place of users of no special language
  bool hasRecord_ = false;   // whether somebody gets one
  HtmlWriter title_{HtmlWriter::Target::PART};
  Facts shared_;                   // by all views
  std::size_t audiencesLeft_ = 0;  // that are not shown
  std::optional<DocumentFailure> failure_;
  std::optional<IconFinder> icons_;  // where there is a tree
  Requests requests_;
};

}  // namespace

ExitStatus printPage(const PageRequest& request) {
  return Page(request).print();
}

}  // namespace orvane::nimbrel::tools
