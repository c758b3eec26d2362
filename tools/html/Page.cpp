#include "tools/html/Page.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

#include "check/Check.h"
#include "config/ConfigParserFactory.h"
#include "tools/findings/FindingPrinter.h"
#include "tools/html/ApplicationView.h"
#include "tools/html/FindingSection.h"
#include "tools/html/Requests.h"
#include "tools/html/Style.h"
#include "tools/input/Input.h"
#include "tools/output/Escape.h"
#include "tools/output/Output.h"
#include "util/HostSymbols.h"
#include "util/XmlParserLibXml.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr std::size_t MOST_WALKED = std::size_t{64} * 1024 * 1024;  // bytes of documents
constexpr std::size_t TITLE_LENGTH = 300;

class Page {
 public:
  explicit Page(const PageRequest& request) : request_(request) {}

  ExitStatus print() {
    const std::uint32_t logMask = util::logMask();  // before a document can change it
    readDocument();
    report_ = icons_  // there is a document
                  ? check::checkDocument(std::move(bytes_), {request_.locales, logMask, package_})
                  : reportOf(*failure_);
    printHead();
    printHeader();
    html_.markup("<main id=\"main\">\n");
    printApplications();
    if (!requests_.isEmpty()) {
      html_.markup(
          "<section aria-labelledby=\"requests\">\n"
          "<h2 id=\"requests\">What it asks for</h2>\n");
      requests_.print(html_);
      html_.markup("</section>\n");
    }
    html_.markup("<section aria-labelledby=\"findings\">\n<h2 id=\"findings\">Check</h2>\n");
    printFindings(html_, *report_);
    html_.markup("</section>\n</main>\n<footer>\n<p>Made by nimbrel-config " NIMBREL_VERSION
                 ". This page has no script and loads nothing.</p>\n</footer>\n</body>\n</html>\n");
    html_.flush();
    if (!failure_) {
      return EXIT_DONE;
    }
    writeError(explained(*failure_, name_, *report_).what());
    return failure_->status();
  }

 private:
  void readDocument() {
    name_ = request_.file == STANDARD_INPUT ? request_.stdinName : request_.file;
    try {
      Document document = tools::readDocument(request_.file, request_.stdinName);
      name_ = document.name;
      bytes_ = std::move(document.bytes);
      package_ = document.contents();
      icons_.emplace(document.package);
      collectViews(readingDocument(name_, [&] {
        return util::XmlParserLibXml().parse(
            bytes_.data(), static_cast<unsigned int>(bytes_.size()),
            request_.url ? request_.url->c_str() : nullptr, nullptr);
      }));
    } catch (const DocumentFailure& failure) {
      if (failure.status() != EXIT_REJECTED) {
        throw;
      }
      failure_ = failure;
    }
  }

  void collectViews(const std::shared_ptr<util::XmlDocument>& tree) {
    std::vector<Audience> audiences;
    if (request_.locales) {
      audiences.push_back({*request_.locales});
    } else {
      audiences = audiencesOf(*tree);
    }
    // Each takes a walk through the document.
    const std::size_t walks = MOST_WALKED / std::max<std::size_t>(bytes_.size(), 1);
    const std::size_t shown = std::min({audiences.size(), MOST_AUDIENCES, walks + 1});
    audiencesLeft_ = audiences.size() - shown;
    audiences.resize(shown);
    for (Audience& audience : audiences) {
      views_.push_back({std::move(audience)});
      collect(tree, views_.back());
    }
    shared_ = takeShared(views_);
    if (views_.front().audience.locales.empty()) {  // those without a language come last
      std::rotate(views_.begin(), views_.begin() + 1, views_.end());
    }
  }

  /// Holds one record at a time, which can be much larger than its document.
  void collect(const std::shared_ptr<util::XmlDocument>& tree, View& view) {
    const std::vector<std::string>& locales = view.audience.locales;
    // One for each, as a parser remembers a start file.
    const auto parser = config::createNimbrelConfigParser(locales);
    try {
      const auto record = readingDocument(name_, [&] { return parser->process(tree, locales); });
      if (title_.isEmpty() && record->getName() && !record->getName().get().empty()) {
        title_.localized(record->getName().get(), TITLE_LENGTH);
      }
      describe(view, *record, *icons_);
      requests_.add(*record, view.audience);
    } catch (const DocumentFailure& failure) {
      failure_ = failure_ ? failure_ : failure;
      view.problem = failure.problem();
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
      html_.text(requests_.isEmpty() ? "Rejected document" : "Application without a name");
    }
    html_.part(title_).markup("</h1>\n<p class=\"verdict\">");
    printVerdict(html_, *report_, requests_.isEmpty(), failure_.has_value());
    html_.markup("</p>\n</div>\n");
    printFacts(html_, shared_);
    html_.markup(
        "<nav aria-label=\"On this page\">\n<ul>\n"
        "<li><a href=\"#users\">As users see it</a></li>\n");
    if (!requests_.isEmpty()) {
      html_.markup("<li><a href=\"#requests\">What it asks for</a></li>\n");
    }
    html_.markup("<li><a href=\"#findings\">Check</a></li>\n</ul>\n</nav>\n</header>\n");
  }

  void printApplications() {
    html_.markup("<section aria-labelledby=\"users\">\n<h2 id=\"users\">As users see it</h2>\n");
    if (requests_.isEmpty()) {
      html_.markup("<p>The document is rejected: nobody gets this application (");
      printErrorLink(html_, *report_, failure_->problem().line);
      html_.markup(").</p>\n</section>\n");
      return;
    }
    html_.markup("<div class=\"views\">\n");
    for (const View& view : views_) {
      html_.markup("<article>\n<h3>Users of ");
      printAudience(html_, view.audience, views_.size() == 1);
      html_.markup("</h3>\n").part(view.face);
      printFacts(html_, view.facts);
      if (view.problem) {
        html_.markup(
            "<p><strong class=\"error\">Rejected</strong> They do not get this application (");
        printErrorLink(html_, *report_, view.problem->line);
        html_.markup(").</p>\n");
      }
      html_.markup("</article>\n").flush();
    }
    html_.markup("</div>\n");
    if (audiencesLeft_ != 0) {
      html_.markup("<p class=\"cut\">Not on this page: ")
          .count(audiencesLeft_, "more language")
          .markup(".</p>\n");
    }
    html_.markup("</section>\n");
  }

  const PageRequest& request_;
  HtmlWriter html_;
  std::string name_;
  std::string bytes_;
  std::optional<check::PackageContents> package_;
  std::optional<IconFinder> icons_;  // where there is a document
  std::optional<DocumentFailure> failure_;
  std::unique_ptr<const check::Report> report_;
  HtmlWriter title_;
  std::vector<View> views_;        // none when it is not well-formed
  Facts shared_;                   // by all views
  std::size_t audiencesLeft_ = 0;  // that are not shown
  Requests requests_;              // none when nobody gets a record
};

}  // namespace

ExitStatus printPage(const PageRequest& request) {
  return Page(request).print();
}

}  // namespace orvane::nimbrel::tools
