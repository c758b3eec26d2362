#include "tools/input/Package.h"

#include <strings.h>
#include <zip.h>

#include <cstdint>
#include <memory>
#include <optional>

#include "tools/Failure.h"

namespace orvane::nimbrel::tools {
namespace {

constexpr std::size_t MAXIMUM_SIZE = std::size_t{16} * 1024 * 1024;

struct DiscardArchive {
  void operator()(zip_t* archive) const noexcept { zip_discard(archive); }
};
struct CloseEntry {
  void operator()(zip_file_t* entry) const noexcept { zip_fclose(entry); }
};
using Archive = std::unique_ptr<zip_t, DiscardArchive>;
using Entry = std::unique_ptr<zip_file_t, CloseEntry>;

std::string messageOf(int code) {
  zip_error_t error;
  zip_error_init_with_code(&error, code);
  std::string message = zip_error_strerror(&error);
  zip_error_fini(&error);
  return message;
}

/// Where the document is in the archive. Names are compared as bytes, as a runtime does.
zip_uint64_t findDocument(zip_t* archive, const std::string& path) {
  std::optional<zip_uint64_t> found;
  std::string similar;
  const zip_int64_t count = zip_get_num_entries(archive, 0);
  for (zip_int64_t index = 0; index < count; ++index) {
    const auto at = static_cast<zip_uint64_t>(index);
    const char* name = zip_get_name(archive, at, ZIP_FL_ENC_RAW);
    if (name == nullptr || ::strcasecmp(name, PACKAGED_DOCUMENT) != 0) {
      continue;
    }
    if (std::string_view(name) != PACKAGED_DOCUMENT) {
      similar = name;
    } else if (found) {
      // Which of them counts depends on who reads the archive: no telling what a runtime will do.
      throw rejection(path, "more than one config.xml at the root of the archive");
    } else {
      found = at;
    }
  }
  if (!found) {
    throw rejection(path, "no config.xml at the root of the archive" +
                              (similar.empty() ? similar : ", and '" + similar + "' is another"));
  }
  return *found;
}

std::string readDocument(const Archive& archive, const std::string& path) {
  const zip_uint64_t index = findDocument(archive.get(), path);
  const auto damaged = [&](const char* reason) {
    return rejection(path, std::string("config.xml cannot be unpacked: ") + reason);
  };
  const auto oversized = [&] { return rejection(path, "config.xml is larger than 16 MiB"); };

  zip_stat_t stat;
  if (zip_stat_index(archive.get(), index, 0, &stat) != 0) {
    throw damaged(zip_strerror(archive.get()));
  }
  if ((stat.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && stat.encryption_method != ZIP_EM_NONE) {
    throw damaged("it is encrypted");
  }
  if ((stat.valid & ZIP_STAT_SIZE) != 0 && stat.size > MAXIMUM_SIZE) {
    throw oversized();
  }
  const Entry entry(zip_fopen_index(archive.get(), index, 0));
  if (entry == nullptr) {
    throw damaged(zip_strerror(archive.get()));
  }
  std::string bytes;
  while (true) {
    constexpr std::size_t STEP = 65536;
    const std::size_t used = bytes.size();
    bytes.resize(used + STEP);
    const zip_int64_t got = zip_fread(entry.get(), bytes.data() + used, STEP);
    if (got < 0) {
      throw damaged(zip_file_strerror(entry.get()));
    }
    bytes.resize(used + static_cast<std::size_t>(got));
    if (got == 0) {
      return bytes;
    }
    if (bytes.size() > MAXIMUM_SIZE) {
      throw oversized();
    }
  }
}

Archive required(zip_t* archive, int code, const std::string& path) {
  if (archive == nullptr) {
    throw rejection(path, "no usable ZIP archive: " + messageOf(code));
  }
  return Archive(archive);
}

}  // namespace

bool isPackage(std::string_view bytes) noexcept {
  const std::string_view head = bytes.substr(0, 4);
  return head == "PK\x03\x04" || head == "PK\x05\x06";
}

std::string readPackage(FileDescriptor file, const std::string& path) {
  int code = 0;
  zip_t* const opened = zip_fdopen(file.get(), 0, &code);
  if (opened != nullptr) {
    static_cast<void>(file.release());  // the archive has it now
  }
  return readDocument(required(opened, code, path), path);
}

std::string readPackage(std::string_view bytes, const std::string& path) {
  zip_error_t error;
  zip_error_init(&error);
  zip_source_t* const source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
  zip_t* const opened =
      source == nullptr ? nullptr : zip_open_from_source(source, ZIP_RDONLY, &error);
  if (opened == nullptr) {
    zip_source_free(source);
  }
  const int code = zip_error_code_zip(&error);
  zip_error_fini(&error);
  return readDocument(required(opened, code, path), path);
}

}  // namespace orvane::nimbrel::tools
