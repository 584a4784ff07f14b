#include "chartbook/options.hpp"

#include <getopt.h>

#include <array>
#include <charconv>
#include <vector>

#include "service/desk/user_settings.hpp"
#include "service/text/text.hpp"

namespace quintara::chartbook {
namespace {

using quotes::escaped;
using quotes::parseCount;

constexpr int kMostPixels = 16384;  // device pixels in either direction

int countOf(const char* flag, const std::string& text, int least, int most) {
  const auto count = parseCount(text);
  if (!count || *count < least || *count > most) {
    throw BadFlag(std::string(flag) + " needs a number from " + std::to_string(least) + " to " +
                  std::to_string(most) + ", not " + escaped(text));
  }
  return *count;
}

void setSize(Options& options, const std::string& text) {
  constexpr int kLeast = 50;
  const auto cross = text.find('x');
  if (cross == text.npos) {
    throw BadFlag("--size is written 1440x900, not " + escaped(text));
  }
  options.size.width = countOf("--size", text.substr(0, cross), kLeast, kMostPixels);
  options.size.height = countOf("--size", text.substr(cross + 1), kLeast, kMostPixels);
}

void setScale(Options& options, const std::string& text) {
  constexpr double kMost = 4;
  double scale = 0;
  const char* const end = text.data() + text.size();
  const auto [last, error] = std::from_chars(text.data(), end, scale, std::chars_format::fixed);
  if (error != std::errc() || last != end || !(scale >= 1 && scale <= kMost)) {
    throw BadFlag("--scale needs a number from 1 to 4, such as 1.5, not " + escaped(text));
  }
  options.size.scale = scale;
}

using Action = Options::Action;

/// What a flag goes with.
enum Use : unsigned {
  kAlone = 0,
  kWithChart = 1U << static_cast<unsigned>(Action::Chart),
  kWithList = 1U << static_cast<unsigned>(Action::List),
  kWithLevels = 1U << static_cast<unsigned>(Action::Levels),
  kWithPictures = kWithChart | kWithList,
  kWithAll = ~0U
};

struct Flag {
  const char* name;
  bool hasValue;
  unsigned use;
  void (*apply)(Options& options, const std::string& value);
};

template <Field field>
void setField(Options& options, const std::string& value) {
  options.order.fields.at(field) = value;
}

template <std::filesystem::path Options::*path>
void setPath(Options& options, const std::string& value) {
  options.*path = value;
}

template <bool Options::*flag>
void setTrue(Options& options, const std::string& /*value*/) {
  options.*flag = true;
}

template <Action action>
void setAction(Options& options, const std::string& /*value*/) {
  options.action = action;
}

constexpr std::array kFlags{
    Flag{"span", true, kWithPictures, setField<kSpan>},
    Flag{"interval", true, kWithPictures, setField<kInterval>},
    Flag{"type", true, kWithPictures, setField<kType>},
    Flag{"points", true, kWithPictures,
         [](Options& options, const std::string& value) { setPoints(options.order, value); }},
    Flag{"show", true, kWithPictures, setField<kShow>},
    Flag{"targets", true, kWithPictures, setField<kTargets>},
    Flag{"size", true, kWithPictures, setSize},
    Flag{"scale", true, kWithPictures, setScale},
    Flag{"labels", false, kWithPictures, setTrue<&Options::labels>},
    Flag{"output", true, kWithChart, setPath<&Options::output>},
    Flag{"list", true, kWithList,
         [](Options& options, const std::string& value) {
           options.list = value;
           options.action = Action::List;
         }},
    Flag{"into", true, kWithPictures, setPath<&Options::into>},
    Flag{"levels", true, kWithLevels,
         [](Options& options, const std::string& value) {
           setPoints(options.order, value);
           options.action = Action::Levels;
         }},
    Flag{"json", false, kWithAll, setTrue<&Options::json>},
    Flag{"jobs", true, kWithList,
         [](Options& options, const std::string& value) {
           constexpr int kMostJobs = 256;
           options.jobs = countOf("--jobs", value, 1, kMostJobs);
         }},
    Flag{"quiet", false, kWithAll, setTrue<&Options::quiet>},
    Flag{"prices", true, kWithPictures, setPath<&Options::prices>},
    Flag{"provider", true, kWithPictures,
         [](Options& options, const std::string& value) {
           options.provider = value;
           options.providerNamed = true;
         }},
    Flag{"help", false, kAlone, setAction<Action::Help>},
    Flag{"version", false, kAlone, setAction<Action::Version>},
};
using Given = std::array<bool, kFlags.size()>;

std::vector<option> forGetopt() {
  std::vector<option> flags;
  flags.reserve(kFlags.size() + 1);
  for (const Flag& flag : kFlags) {
    flags.push_back({flag.name, flag.hasValue ? required_argument : no_argument, nullptr,
                     static_cast<int>(flags.size()) + 1});
  }
  flags.push_back({nullptr, 0, nullptr, 0});
  return flags;
}

void takeTickers(Options& options, int count, char* const* tickers) {
  const bool wantsOne = options.action == Action::Chart;
  if (count > (wantsOne ? 1 : 0)) {
    throw BadFlag("unexpected argument " + escaped(tickers[wantsOne ? 1 : 0]) +
                  (wantsOne ? "; several tickers are a list: --list" : ""));
  }
  if (wantsOne && count == 0) {
    throw BadFlag("there is no ticker, no --list and no --levels");
  }
  if (wantsOne) {
    setTicker(options.order, tickers[0]);
  }
}

std::string together(Action action) {
  return action == Action::List ? "--list" : action == Action::Levels ? "--levels" : "one ticker";
}

/// What a single flag cannot show.
void expectUsable(const Options& options, const Given& given) {
  for (std::size_t flag = 0; flag < kFlags.size(); ++flag) {
    if (given.at(flag) &&
        (kFlags.at(flag).use & 1U << static_cast<unsigned>(options.action)) == 0) {
      throw BadFlag("--" + std::string(kFlags.at(flag).name) + " does not go with " +
                    together(options.action));
    }
  }
  if (!options.output.empty() && options.into != Options().into) {
    throw BadFlag("--output names the picture whole, without --into");
  }
  if (options.size.width * options.size.scale > kMostPixels ||
      options.size.height * options.size.scale > kMostPixels) {
    throw BadFlag("--size by --scale is more than " + std::to_string(kMostPixels) + " pixels");
  }
}

}  // namespace

Options parseOptions(int argc, char* const* argv) {
  Options options;
  options.prices = quotes::userPrices();
  options.provider = quotes::userProviderFile();
  const std::vector<option> flags = forGetopt();
  Given given{};
  opterr = 0;
  optind = 0;  // a fresh start, also for a second command line in one process
  for (;;) {
    const int number = ::getopt_long(argc, argv, ":", flags.data(), nullptr);
    if (number == -1) {
      break;
    }
    if (number == '?') {
      throw BadFlag("unknown or ill-formed flag " + escaped(argv[optind - 1]));
    }
    const std::string value = optarg != nullptr ? optarg : "";
    const auto place = static_cast<std::size_t>(number == ':' ? optopt : number) - 1;
    if (kFlags.at(place).hasValue && value.empty()) {
      throw BadFlag("--" + std::string(kFlags.at(place).name) + " needs a value");
    }
    kFlags.at(place).apply(options, value);
    given.at(place) = true;
  }
  if (options.action != Action::Help && options.action != Action::Version) {
    takeTickers(options, argc - optind, argv + optind);
    expectUsable(options, given);
  }
  return options;
}

std::string helpText() {
  return R"(Usage: quintara-chart TICKER [FLAG...]
       quintara-chart --list FILE [--into FOLDER] [FLAG...]
       quintara-chart --levels POINTS [--json]

Draws Quintara's charts as PNG files, without a window or a quote service, and calculates levels.

  --span MONTHS      6, 12, 18 or 24 months of daily bars (12)
  --interval WHAT    daily, weekly or monthly (daily)
  --type WHAT        candle, line or bar (candle)
  --points POINTS    prices with a full stop, such as A1=82.59,B1=93.6,C1=86.5
  --show SETS        point sets whose levels are drawn, such as A1,A2
  --targets TARGETS  targets drawn with them, such as A1=1:1,1.618
  --size WxH         the chart area's, in pixels (960x600)
  --scale N          device pixels for each of them, 1 to 4 (1)
  --labels           write name and value at the left end of each level's line
  --output FILE      the picture (TICKER.png in the folder of --into)
  --list FILE        a watch list; its columns are Ticker, Span, Interval, Type, A1 to C2, Show
                     and Targets, all but the first optional. Flags hold where a line says nothing
  --into FOLDER      where pictures, levels.csv and index.html go (this folder)
  --levels POINTS    the calculator alone
  --json             print levels as JSON
  --jobs N           processes that draw a list (one for each core)
  --quiet            show no progress
  --prices DIR       folder of own prices (quintara/prices in the user's data directory)
  --provider FILE    settings of the provider (quintara/provider.conf in the user's configuration
                     directory)
  --help             show this text
  --version          show the version

Exit codes: 0 all is drawn, 1 some of it could not be, 2 bad flags, list or settings.
)";
}

}  // namespace quintara::chartbook
