#pragma once

#include <string>

namespace orvane::nimbrel::util {

/// The components of an IRI (RFC 3987), as written: nothing is normalised, decoded or folded.
///
///     https://user@example.org:8443/a/b?q=1#top
///     |       |    |           |   |    |   |
///     scheme  |    host     port   path |   fragment
///             userInfo                  query
///
/// Each optional component comes with a flag that tells absent from present but empty.
struct IRI {
  std::string scheme;        ///< "https"; always set
  std::string userInfo;      ///< "user"
  bool hasUserInfo = false;  ///< an "@" stood in the authority
  std::string host;          ///< "example.org"; an IP literal keeps its brackets
  bool hasHost = false;      ///< an authority ("//") was there; its host may be empty
  std::string path;          ///< "/a/b"
  bool hasPath = false;      ///< the path is not empty
  std::string query;         ///< "q=1"
  bool hasQuery = false;     ///< a "?" was there
  std::string fragment;      ///< "top"
  bool hasFragment = false;  ///< a "#" was there
  int port = -1;             ///< 8443; -1 when no port is given or it is empty
};

}  // namespace orvane::nimbrel::util
