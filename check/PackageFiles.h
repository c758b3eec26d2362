#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace orvane::nimbrel::check {

/// What is known of a package without unpacking it.
struct PackageContents {
  /// The names of all entries, in any order, UTF-8 as far as they are text; a folder's ends in "/".
  std::vector<std::string> names;
  std::vector<std::string> links = {};  ///< those of symbolic links and devices
  std::uint64_t unlistedBytes = 0;      ///< bytes of the archive that belong to no entry
};

/// A path within a package, as a runtime resolves it: without "." and empty segments and without a
/// "/" in front, each ".." applied; at the root it does nothing. A "/" at the end, which stands for
/// a folder, is kept. Nothing is decoded: "%", "?", "#" and "\" are characters like others. Throws
/// only `std::bad_alloc`.
[[nodiscard]] std::string resolvePath(std::string_view path);

/// Whether a path leads out of its package, on a system where "\" separates folders or "C:" is a
/// drive, too. Throws only `std::bad_alloc`.
[[nodiscard]] bool leadsOut(std::string_view path);

/// The files of a package, found by the rules of W3C Widgets: byte for byte, in the folders for
/// languages ("locales/en-US/") and at the root.
///
/// Takes time and memory in proportion to the names, apart from the sorting; nothing is hashed: an
/// archive chooses its names. Immutable: for any number of threads. Throws only `std::bad_alloc`.
class PackageFiles {
 public:
  /// Of the names of all entries, as in `PackageContents`.
  explicit PackageFiles(const std::vector<std::string>& names);
  PackageFiles(const PackageFiles&) = delete;
  PackageFiles& operator=(const PackageFiles&) = delete;

  /// Whether a user of these languages (lower case) gets a file by this path; for null, whether
  /// anybody does.
  [[nodiscard]] bool has(std::string_view path, const std::vector<std::string>* languages) const;

  /// The path that another one, for which there is no file, was meant to be: in another case, with
  /// an escape ("%20"), query, fragment or "\" that no runtime takes for one, in another format, or
  /// in another folder. Empty when that is not certain. Lives as long as the object.
  [[nodiscard]] std::string_view meantBy(std::string_view path) const;

  /// Visits names of files that stand twice, those of files and folders that differ by case only
  /// (the folder for languages also from what it should be), and those of files that are folders as
  /// well, each with the other one. The views live as long as the object.
  void forEachAmbiguous(
      const std::function<void(std::string_view name, std::string_view other)>& visit) const;

 private:
  struct Entry {
    std::string folded;  // what is the same for names that differ by case only
    std::string path;

    bool operator<(const Entry& other) const noexcept {
      return std::tie(folded, path) < std::tie(other.folded, other.path);
    }
  };
  /// What a document may write for an entry.
  struct Address {
    std::string_view folded;
    std::string_view path;
    std::string_view language;  // of the folder that it stands in, folded; empty for none

    bool operator<(const Address& other) const noexcept {
      return std::tie(folded, path, language) < std::tie(other.folded, other.path, other.language);
    }
  };

  void addAddresses(const Entry& entry);

  std::vector<Entry> entries_;      // by `folded`, then by `path`
  std::vector<Address> addresses_;  // likewise, then by `language`
  std::vector<Address> names_;      // the same without folders
};

}  // namespace orvane::nimbrel::check
