// What is in the process when. A program of its own: it has to be the first to ask for a module.
//   LoadTest loads                      the first parser of identifiers loads what it needs
//   LoadTest fails TEXT [LIBRARY]       it cannot, says why, and nothing else is harmed;
//                                       LIBRARY is loaded before

#include <dlfcn.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include "config/ConfigParserFactory.h"
#include "util/HostUriMunger.h"
#include "util/PortableFilenameMunger.h"
#include "widgetid/FilenameWidgetIdParser.h"
#include "widgetid/PelloWidgetIdParser.h"
#include "widgetid/WidgetIdError.h"

namespace {

using namespace orvane::zel;

void require(bool holds, const std::string& what) {
  if (!holds) {
    std::cerr << "not so: " << what << '\n';
    std::exit(1);
  }
}

bool isMapped(const std::string& library) {
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) {
    if (line.find('/' + library) != std::string::npos) {
      return true;
    }
  }
  return false;
}

std::string errorOf(const std::function<void()>& use) {
  try {
    use();
  } catch (const config::WidgetIdError&) {
    return "a WidgetIdError";
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return {};
}

const auto hostMunger = std::make_shared<util::HostUriMunger>();
const auto filenameMunger = std::make_shared<util::PortableFilenameMunger>();
const std::string longName(300, 'x');

void loads() {
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([] {
      const config::PelloWidgetIdParser parser(hostMunger, filenameMunger);
      require(parser.deriveWidgetIdAuthority("http://h/a") == "h%2Fa", "any thread may be first");
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  require(isMapped("libglib-2.0"), "GLib is loaded for a name");
}

void fails(const std::string& why) {
  const config::PelloWidgetIdParser parser(hostMunger, filenameMunger);
  for (const char* id : {"http://h/a", "app"}) {
    for (const auto& error : {errorOf([&] { (void)parser.deriveWidgetIdAuthority(id); }),
                              errorOf([&] { (void)parser.deriveDirectoryName(id); })}) {
      require(error.find(why) != std::string::npos, "\"" + error + "\" names " + why);
    }
  }
  const config::FilenameWidgetIdParser byName(filenameMunger);
  require(byName.deriveWidgetIdAuthority("my app.wgt") == "my%20app", "file names need no libsoup");
  require(byName.deriveDirectoryName(longName.c_str()).size() == 255, "nor do long names");
}

}  // namespace

int main(int count, char** arguments) {
  const std::vector<std::string> words(arguments + 1, arguments + count);
  if (words.size() > 2) {
    require(dlopen(words[2].c_str(), RTLD_NOW | RTLD_LOCAL) != nullptr, "the library loads");
  }
  const auto parser = orvane::nimbrel::config::createConfigParser({"en"});
  require(parser->parse(NIMBREL_EXAMPLES "/config.xml", nullptr) != nullptr, "there is a record");
  for (const char* library : {"libsoup-2", "libglib-2.0", "libgobject-2.0"}) {
    require(!isMapped(library), std::string(library) + " is not loaded for a document");
  }
  words[0] == "loads" ? loads() : fails(words[1]);
  return 0;
}
