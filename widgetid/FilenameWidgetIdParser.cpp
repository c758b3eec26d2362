#include "widgetid/FilenameWidgetIdParser.h"

#include <stdexcept>
#include <utility>

#include "util/glib/GlibFunctions.h"

namespace orvane::zel::config {
namespace {

std::string stripExtension(const char* widgetFilename) {
  if (widgetFilename == nullptr) {
    throw std::invalid_argument("widgetFilename was NULL.");
  }
  std::string name = widgetFilename;
  const std::string::size_type dot = name.rfind('.');
  if (dot != std::string::npos) {
    name.erase(dot);
  }
  if (name.empty()) {
    throw std::invalid_argument("filename cannot be the empty string");
  }
  return name;
}

}  // namespace

FilenameWidgetIdParser::FilenameWidgetIdParser(std::shared_ptr<util::FilenameMunger> filenameMunger)
    : filenameMunger_(std::move(filenameMunger)) {
  if (filenameMunger_ == nullptr) {
    throw std::invalid_argument("filenameMunger was NULL.");
  }
}

FilenameWidgetIdParser::~FilenameWidgetIdParser() = default;

std::string FilenameWidgetIdParser::deriveWidgetIdAuthority(const char* widgetFilename) const {
  const std::string name = stripExtension(widgetFilename);
  std::string authority;
  if (!util::internal::glibFunctions().tryEscapeUri(name.c_str(), nullptr, authority)) {
    throw std::runtime_error(
        "g_uri_escape_string failed to encode the filename. Cannot derive an authority from the "
        "widget identifier.");
  }
  return authority;
}

std::string FilenameWidgetIdParser::deriveDirectoryName(const char* widgetFilename) const {
  std::string name = stripExtension(widgetFilename);
  filenameMunger_->munge(name);
  return name;
}

}  // namespace orvane::zel::config
