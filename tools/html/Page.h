#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/Failure.h"

namespace orvane::nimbrel::tools {

/// What a page is made of.
struct PageRequest {
  std::string file;                ///< a document or a package, as `readDocument` takes it
  std::string stdinName;           ///< what the page calls standard input
  std::optional<std::string> url;  ///< name of the document
  /// Of the one user for whom the page is; without them it is for every language of the document.
  std::optional<std::vector<std::string>> locales;
};

/// Prints a page for a person on standard output: the application as its users see it, what it
/// asks for, and what is found in its document.
///
/// The page is HTML in one piece, without scripts and links to elsewhere, and well-formed as XML.
/// Of a document that is rejected it says why, which goes to standard error, too. Time and memory
/// grow with the size of the document, the page has a largest size. Throws `Failure` for what
/// cannot be read or written.
ExitStatus printPage(const PageRequest& request);

}  // namespace orvane::nimbrel::tools
