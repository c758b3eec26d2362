#include "tools/html/Page.h"

#include <algorithm>
#include <cstdint>
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
#include "util/HostSymbols.h"
#include "util/XmlParserLibXml.h"

namespace orvane::nimbrel::tools {
namespace {

using config::BasicConfig;

constexpr std::size_t MOST_WALKED = std::size_t{64} * 1024 * 1024;  // bytes of documents

using Record = std::shared_ptr<const BasicConfig>;

/// What the page has of a document for one audience.
struct View {
  Audience audience;
  bool isRejected = true;
  bool hasName = false;
  HtmlWriter title{HtmlWriter::Target::PART};
  HtmlWriter facts{HtmlWriter::Target::PART};
  HtmlWriter application{HtmlWriter::Target::PART};
};

View viewOf(Audience audience, const Record& record, IconFinder& icons) {
  View view;
  view.audience = std::move(audience);
  if (record != nullptr) {
    view.isRejected = false;
    view.hasName = record->getName() && !record->getName().get().empty();
    if (view.hasName) {
      view.title.localized(record->getName().get(), 300);
    }
    printFacts(view.facts, *record);
    printApplication(view.application, *record, icons);
  }
  return view;
}

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
    if (!views_.empty()) {
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
    Record common = recordFor(request_.locales.value_or(std::vector<std::string>()));
    std::vector<Audience> audiences = findAudiences(common);
    for (std::size_t i = 0; i < audiences.size(); ++i) {
      const bool isCommon = audiences[i].hasOthers || audiences.size() == 1;
      const Record record = isCommon ? std::move(common) : recordFor(audiences[i].locales);
      if (record != nullptr) {
        requests_.add(*record, i);
      }
      if (isCommon) {
        common_ = i;
      }
      views_.push_back(viewOf(std::move(audiences[i]), record, *icons_));
    }
    tree_.reset();
  }

  void checkDocument(std::uint32_t logMask) {
    if (icons_) {  // there is a document
      report_ = check::checkDocument(std::move(bytes_), request_.locales, logMask, package_);
      return;
    }
    const DocumentFailure::Problem& problem = failure_->problem();
    auto report = std::make_unique<check::Report>("");
    report->reject(problem.reason, problem.line, problem.column);
    report_ = std::move(report);
  }

  /// What users of these locales get; null when that rejects the document.
  Record recordFor(const std::vector<std::string>& locales) {
    // One for each, as a parser remembers a start file.
    const auto parser = config::createNimbrelConfigParser(locales);
    try {
      return parsingDocument(name_, *parser, [&] { return parser->process(tree_, locales); });
    } catch (const DocumentFailure& failure) {
      failure_ = failure_ ? failure_ : failure;
      return nullptr;
    }
  }

  /// Those for whom the page is, of whom `common` is what users of no special language get.
  std::vector<Audience> findAudiences(const Record& common) {
    if (request_.locales) {
      return {{*request_.locales, false}};
    }
    std::string defaultLocale;
    if (common != nullptr) {
      // What the parser took of the document stands in front of "*".
      const std::vector<std::string>& locales = common->getUserAgentLocales();
      defaultLocale = locales.size() > 1 ? locales.front() : defaultLocale;
    }
    std::vector<Audience> audiences = audiencesOf(*tree_, defaultLocale);
    // Each takes a walk through the document.
    const std::size_t walks = MOST_WALKED / std::max<std::size_t>(bytes_.size(), 1);
    const std::size_t shown = std::min({audiences.size(), MOST_AUDIENCES, walks + 1});
    audiencesLeft_ = audiences.size() - shown;
    audiences.resize(shown);
    if (defaultLocale.empty()) {  // those without a language of their own come last
      std::rotate(audiences.begin(), audiences.begin() + 1, audiences.end());
    }
    return audiences;
  }

  /// The view that gives the application its name and facts; null when nobody gets one.
  [[nodiscard]] const View* titleView() const {
    constexpr std::size_t MOST_TRIED = 3;
    const View* found = views_.empty() || views_[common_].isRejected ? nullptr : &views_[common_];
    for (std::size_t i = 0; i < std::min(views_.size(), MOST_TRIED); ++i) {
      if (!(found != nullptr && found->hasName) && !views_[i].isRejected) {
        found = &views_[i];
      }
    }
    return found;
  }

  [[nodiscard]] bool hasRecord() const {
    return std::any_of(views_.begin(), views_.end(), [](const View& v) { return !v.isRejected; });
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
    const View* const view = titleView();
    if (view != nullptr && view->hasName) {
      html_.part(view->title);
    } else {
      html_.text(hasRecord() ? "Application without a name" : "Rejected document");
    }
    html_.markup("</h1>\n");
    if (view != nullptr) {
      html_.part(view->facts);
    }
    html_.markup(
        "<nav aria-label=\"On this page\">\n<ul>\n"
        "<li><a href=\"#users\">As users see it</a></li>\n");
    if (!views_.empty()) {
      html_.markup("<li><a href=\"#requests\">What it asks for</a></li>\n");
    }
    html_.markup("<li><a href=\"#findings\">Check</a>: ");
    printFindingCounts(html_, *report_);
    html_.markup("</li>\n</ul>\n</nav>\n</header>\n");
  }

  void printApplications() {
    html_.markup("<section aria-labelledby=\"users\">\n<h2 id=\"users\">As users see it</h2>\n");
    if (views_.empty()) {
      html_.markup("<p>The document is rejected: nobody gets this application.</p>\n");
    }
    html_.markup("<div class=\"views\">\n");
    for (const View& view : views_) {
      html_.markup("<article>\n<h3>Users of ");
      printAudience(html_, view.audience, views_.size() == 1);
      html_.markup("</h3>\n").part(view.application);
      if (view.isRejected) {
        html_.markup(
            "<p><strong class=\"error\">Rejected</strong> They do not get this application; "
            "the <a href=\"#findings\">check</a> says why.</p>\n");
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
    html_.markup(
        "<section aria-labelledby=\"requests\">\n"
        "<h2 id=\"requests\">What it asks for</h2>\n");
    if (hasRecord()) {
      std::vector<const Audience*> audiences;
      for (const View& view : views_) {
        audiences.push_back(&view.audience);
      }
      requests_.print(html_, audiences);
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
  HtmlWriter html_{HtmlWriter::Target::OUTPUT};
  std::string name_;
  std::string bytes_;
  std::optional<std::vector<std::string>> package_;  // names of its entries
  std::unique_ptr<const check::Report> report_;
  std::shared_ptr<util::XmlDocument> tree_;  // null: not well-formed
  std::vector<View> views_;
  std::size_t common_ = 0;         // the view of users of no special language
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
