#include "tools/record/RejectedNumber.h"

#include <string_view>

#include "config/Namespaces.h"
#include "tools/output/Escape.h"

namespace orvane::nimbrel::tools {

void RejectedNumber::onFinding(const config::Finding& finding) {
  if (finding.code != config::FindingCode::NUMBER_REJECTED || finding.element == nullptr) {
    return;
  }
  const util::XmlNode& element = *finding.element;
  const std::string_view key = element.attributeView("key");
  line_ = finding.line;
  subject_ = element.namespaceView() == config::EXTENSION_NAMESPACE ? "tavlo:" : "";
  subject_ += escape(element.nameView()) + " \"" +
              escape(key.data() == nullptr ? element.attributeView("name") : key) + '"';
}

DocumentFailure RejectedNumber::complete(const std::string& file,
                                         const DocumentFailure& failure) const {
  if (line_ == 0 || failure.problem().line != 0) {
    return failure;
  }
  return {failure.status(), file, {failure.problem().reason, line_, 0, subject_}};
}

}  // namespace orvane::nimbrel::tools
