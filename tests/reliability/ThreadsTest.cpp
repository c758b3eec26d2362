// Worth most under the thread sanitizer, which fails these tests on any race.

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <stdexcept>
#include <thread>

#include "tests/support/Checks.h"
#include "tests/support/ConfigReader.h"
#include "tests/support/RecordDump.h"
#include "tools/commands/InOrder.h"
#include "util/HostSymbols.h"
#include "util/HostUriMunger.h"
#include "util/IDNConverter.h"
#include "util/PortableFilenameMunger.h"
#include "widgetid/BasicWidgetId.h"
#include "widgetid/LocalizedElementParser.h"
#include "widgetid/PelloWidgetIdParser.h"

namespace {

std::atomic<long> lines{0};

// GLib's own allocator passes blocks from thread to thread under locks that no sanitizer sees.
const int usesMalloc = setenv("G_SLICE", "always-malloc", 1);

}  // namespace

// The host's part, so that lines go nowhere.
extern "C" {

const char* APP_ID = "threads";
std::uint32_t g_quillo_log_mask = 0;

__attribute__((visibility("default"))) void syslog(int /*priority*/, const char* /*text*/, ...) {
  ++lines;
}
// NOLINTNEXTLINE(clang-diagnostic-reserved-identifier): the C library chose the name.
__attribute__((visibility("default"))) void __syslog_chk(int /*priority*/, int /*flag*/,
                                                         const char* /*text*/, ...) {
  ++lines;
}
}

namespace orvane::nimbrel::test {
namespace {

constexpr int THREADS = 8;
constexpr int ROUNDS = 25;
const char* const EVERYTHING = NIMBREL_EXAMPLES "/config.xml";

/// Runs `work`, given the number of the thread, on many threads at once.
void onManyThreads(const std::function<void(int)>& work) {
  std::atomic<int> waiting{THREADS};
  std::vector<std::thread> threads;
  for (int number = 0; number < THREADS; ++number) {
    threads.emplace_back([&, number] {
      --waiting;
      while (waiting > 0) {
        std::this_thread::yield();
      }
      work(number);
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
}

std::string dumpFor(const std::string& locale) {
  Reader reader({locale});
  reader.parse(EVERYTHING, nullptr);
  return dumpOf(reader.record());
}

// Processes that have used nothing before, so that whatever is made at the first use is made by
// many threads at once.
TEST(Threads, MayBeTheFirstToUseAService) {
  for (int process = 0; process < 20; ++process) {
    const pid_t child = ::fork();
    if (child == 0) {
      std::atomic<int> wrong{0};
      onManyThreads([&](int) {
        for (int round = 0; round < 20; ++round) {
          std::string host;
          const bool isHost = util::IDNConverter().tryConvertToASCII("b\u00FCcher.example", host);
          wrong += isHost && host == "xn--bcher-kva.example" ? 0 : 1;
        }
      });
      ::_exit(wrong == 0 ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
  }
}

// First of all tests, so that the libraries below are started by many threads at once, too.
TEST(Threads, EachHasAParser) {
  const std::string locales[] = {"en", "de", "he", "fr"};
  std::vector<std::string> dumps(THREADS);
  std::atomic<int> rejected{0};
  onManyThreads([&](int number) {
    for (int round = 0; round < ROUNDS; ++round) {
      dumps[static_cast<std::size_t>(number)] = dumpFor(locales[number % 4]);
      try {
        Reader().document("<widget><b>");
      } catch (const config::ConfigParser::ConfigException&) {
        ++rejected;
      }
    }
  });
  EXPECT_EQ(rejected, THREADS * ROUNDS);
  for (int number = 0; number < THREADS; ++number) {
    EXPECT_EQ(difference(dumps[static_cast<std::size_t>(number)], dumpFor(locales[number % 4])),
              "");
  }
}

TEST(Threads, ManyReadOneRecordAndItsElements) {
  Reader reader({"de", "en"});
  reader.parse(EVERYTHING, nullptr);
  config::BasicConfig& record = reader.record();
  const std::string expected = dumpOf(record);
  const std::vector<const config::Element*> icons =
      record.getElements("icon", config::W3C_WIDGETS_NAMESPACE);
  ASSERT_FALSE(icons.empty());
  std::atomic<int> wrong{0};
  onManyThreads([&](int /*number*/) {
    for (int round = 0; round < ROUNDS; ++round) {
      config::BasicConfig copy = record;
      wrong += dumpOf(record) != expected ? 1 : 0;
      wrong += dumpOf(copy) != expected ? 1 : 0;
      for (const config::Element* icon : icons) {
        wrong += icon->getSingleAttributeValue("src") ? 0 : 1;
        std::shared_ptr<util::XmlNode> node = icon->getNode();
        wrong += node->getParent() != nullptr ? 0 : 1;
      }
    }
  });
  EXPECT_EQ(wrong, 0);
}

TEST(Threads, ASettingSwitchesTheMaskWhileOthersLogAndTheHostSwitchesItBack) {
  util::setLogMask(0);
  lines = 0;
  onManyThreads([&](int number) {
    for (int round = 0; round < ROUNDS; ++round) {
      if (number == 0) {
        util::setLogMask(0);
        std::this_thread::yield();
      } else if (number % 2 == 0) {
        read(extension("settings", named("setting", "debug", "yes")));
      } else {
        dumpFor("en");
      }
    }
  });
  read(extension("settings", named("setting", "debug", "yes")));
  EXPECT_GT(lines, 0);
  EXPECT_EQ(util::logMask(), 0x0FFFFFFEU);
  util::setLogMask(0);
}

TEST(Threads, ManyShareIdentityParsersAndMungers) {
  const auto parser = std::make_shared<zel::config::PelloWidgetIdParser>(
      std::make_shared<zel::util::HostUriMunger>(),
      std::make_shared<zel::util::PortableFilenameMunger>());
  const std::string id =
      "https://b\xC3\xBC"
      "cher.example/a b";
  const std::string expected = zel::config::BasicWidgetId(id.c_str(), parser).toDirectoryName();
  const std::string xml = widget("<description xml:lang='en'>x</description>");
  std::atomic<int> wrong{0};
  onManyThreads([&](int /*number*/) {
    for (int round = 0; round < ROUNDS; ++round) {
      const zel::config::BasicWidgetId names(id.c_str(), parser);
      wrong += names.toDirectoryName() == expected ? 0 : 1;
      wrong += zel::config::LocalizedElementParser::getLocalizedElementMap(
                   xml.data(), static_cast<unsigned int>(xml.size()), "description", true)
                           .at("en") == "x"
                   ? 0
                   : 1;
    }
  });
  EXPECT_EQ(wrong + usesMalloc, 0);
}

/// A result that is counted by a pointer that all share.
struct CountedResult {
  std::size_t index;
  std::shared_ptr<const int> counter;
};

// The command line's threads, without its files.
TEST(ThreadsOfTheTool, DeliverInOrderUpToWhatThrows) {
  constexpr std::size_t SLICE = 32;
  const struct {
    std::size_t count, workFailsAt, deliveryFailsAt, delivered;
  } cases[] = {{0, 9, 9, 0},
               {1, 9, 9, 1},
               {2000, 9999, 9999, 2000},
               {2000, 1501, 9999, 1501 / SLICE * SLICE},
               {2000, 9999, 1003, 1003},
               {2000, 0, 0, 0}};
  for (const auto& c : cases) {
    for (const unsigned int jobs : {1U, 2U, 7U}) {
      SCOPED_TRACE(testing::Message() << c.delivered << " of " << c.count << ", jobs " << jobs);
      std::size_t delivered = 0;  // guarded by nothing but the promise
      const auto counter = std::make_shared<const int>();
      const long maximum = 1 + static_cast<long>(SLICE) * (jobs + 1);
      const auto run = [&] {
        tools::doInOrder(
            c.count, jobs, [&](std::size_t begin) { return std::min(begin + SLICE, c.count); },
            [&](std::size_t index) {
              return index == c.workFailsAt ? throw std::out_of_range("work")
                                            : CountedResult{index, counter};
            },
            [&](std::size_t index, const CountedResult& result) {
              EXPECT_EQ(result.index, index);
              EXPECT_EQ(index, delivered);
              EXPECT_LE(counter.use_count(), maximum);
              if (index == c.deliveryFailsAt) {
                throw std::out_of_range("delivery");
              }
              ++delivered;
            });
      };
      if (c.workFailsAt < c.count || c.deliveryFailsAt < c.count) {
        EXPECT_THROW(run(), std::out_of_range);
      } else {
        run();
      }
      EXPECT_EQ(delivered, c.delivered);
      EXPECT_EQ(counter.use_count(), 1) << "no thread is left";
    }
  }
}

}  // namespace
}  // namespace orvane::nimbrel::test
