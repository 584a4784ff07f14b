#include <gmock/gmock.h>
#include <png.h>
#include <sys/wait.h>
#include <unistd.h>

#include <bit>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "chartbook/files.hpp"
#include "chartbook/jobs.hpp"
#include "chartbook/png.hpp"
#include "chartbook/watch_list.hpp"
#include "support/fakes.hpp"

namespace quintara::chartbook {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

/// A folder of its own, in which the program runs.
struct Chartbook : testing::Test {
  Chartbook() { fs::create_directories(folder); }
  ~Chartbook() override { fs::remove_all(folder); }
  void write(const std::string& name, const std::string& text) const {
    std::ofstream(folder / name) << text;
  }
  [[nodiscard]] std::string read(const std::string& name) const {
    std::ifstream file(folder / name);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  /// Exit code and a blank, then everything that was said.
  [[nodiscard]] std::string run(const std::string& arguments,
                                const std::string& locale = "C") const {
    return shell("LC_ALL=" + locale + " " QUINTARA_CHART " " + arguments);
  }
  [[nodiscard]] std::string shell(const std::string& command) const {
    const std::string whole =
        "{ cd " + folder.string() + " && export HOME=$PWD && " + command + "; } 2>&1";
    FILE* const output = popen(whole.c_str(), "r");
    std::string said;
    for (int c = fgetc(output); c != EOF; c = fgetc(output)) said += static_cast<char>(c);
    return std::to_string(WEXITSTATUS(pclose(output))) + " " + said;
  }
  const fs::path folder = fs::temp_directory_path() / ("chartbook-" + std::to_string(getpid()));
};

TEST_F(Chartbook, ReadsWatchListsInEveryForm) {
  const std::pair<const char*, const char*> kLists[] = {
      {"Ticker,A1\nAAA,12.5\n", "AAA 12.5 12"},
      {"note;a1; TICKER\r\n# no\r\nx;12,5;AAA;\r\n\r\n", "AAA 12.5 12"},
      {"Ticker,A1,a1\n", "watch.csv names the column A1 twice"},
      {"Span\tTicker\n6\tAAA\n\tBBB\n", "AAA  6, BBB  12"},
      {"Ticker,Targets\n\"A\"\"\",\"A1=1:1,1.618\"\n", "A\"  12"},
      {"Symbol\nAAA\n", "watch.csv has no column Ticker in its first line"},
      {"Ticker\n\n", "watch.csv lists no ticker"},
  };
  for (const auto& [text, expected] : kLists) {
    write("watch.csv", text);
    std::string found;
    try {
      Order usual;
      usual.fields[kSpan] = "12";
      for (const Order& order : readWatchList(folder / "watch.csv", usual))
        found += (found.empty() ? "" : ", ") + order.fields[kTicker] + " " +
                 order.fields[kFirstPoint] + " " + order.fields[kSpan];
    } catch (const BadOrder& error) {
      found = std::string(error.what()).substr(folder.string().size() + 1);
    }
    EXPECT_EQ(found, expected) << text;
  }
}

TEST_F(Chartbook, PutsEveryPixelIntoThePicture) {
  NoGlyphs glyphs;
  for (const int colours : {1, 2, 256, 257}) {
    Raster raster(glyphs, {0}, {0xFFFFFF});
    raster.resize(300, 2, 1);
    for (int x = 0; x < 300; ++x)
      raster.Line(static_cast<float>(x), 1, static_cast<float>(x), 1,
                  {static_cast<std::uint32_t>(x % colours) * 0x010305U});
    const std::string file = pngOf(raster);
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_memory(&image, file.data(), file.size()));
    EXPECT_EQ((image.format & PNG_FORMAT_FLAG_COLORMAP) != 0, colours <= 256) << colours;
    image.format = std::endian::native == std::endian::little ? PNG_FORMAT_BGRA : PNG_FORMAT_ARGB;
    std::vector<std::uint32_t> pixels(600);
    ASSERT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr));
    const auto* const row = raster.pixels() + raster.stride() / 4;
    ASSERT_EQ(std::vector(pixels.begin() + 300, pixels.end()), std::vector(row, row + 300))
        << colours;
  }
}

TEST_F(Chartbook, LosesOnePieceWithAProcessThatEnds) {
  std::vector<std::string> answers(40);
  const std::string large(100'000, 'x');  // more than a pipe takes at once
  inProcesses(
      40, 3,
      [&](std::size_t piece) {
        return piece == 7 ? (_exit(1), "") : std::to_string(piece) + large;
      },
      [&](std::size_t piece, const std::string& answer) { answers.at(piece) += answer; });
  for (std::size_t i = 0; i < answers.size(); ++i)
    EXPECT_EQ(answers[i], i == 7 ? "" : std::to_string(i) + large) << i;
}

TEST_F(Chartbook, SaysWhatIsWrongByExitCodeAndReason) {
  const std::pair<const char*, const char*> kRuns[] = {
      {"--levels A1=82.59,B1=93.6,C1=86.5",
       "0 A1 retracement 38.2%\t89.394\nA1 retracement 50%\t88.095\n"},
      {"--levels A3=150,B2=100 --json",
       R"(0 {"levels":[{"set":"A3","level":"38.2%","value":119.1},)"},
      {"--levels A1=5", "2 quintara-chart: error: no levels"},
      {"--levels A9=5", "2 quintara-chart: error: a point is written"},
      {"--levels A1=1e5,B1=7", "2 quintara-chart: error: A1 is a price above 0"},
      {"", "2 quintara-chart: error: there is no ticker"},
      {"DEMO DOWN", "2 quintara-chart: error: unexpected argument DOWN"},
      {"DEMO --span 9", "2 quintara-chart: error: Span is one of 6 months, 12"},
      {"DEMO --show A5", "2 quintara-chart: error: Show lists A1 to A4, not A5"},
      {"DEMO --show A1", "2 quintara-chart: error: A1 has no retracements to show"},
      {"DEMO --points A1=5,B1=7 --targets A1=1", "2 quintara-chart: error: A1 has no targets"},
      {"DEMO --points A1=5,B1=7,C1=6 --targets A1=2",
       "2 quintara-chart: error: there is no target A1=2"},
      {"DEMO --points A1=5,B1=7,C1=6 --targets A1=1",
       "2 quintara-chart: error: the target A1=1 is drawn with its set only"},
      {"DEMO --size 40x900", "2 quintara-chart: error: --size needs a number from 50"},
      {"DEMO --size 9000x900 --scale 2", "2 quintara-chart: error: --size by --scale"},
      {"DEMO --scale 1,5", "2 quintara-chart: error: --scale needs"},
      {"DEMO --span", "2 quintara-chart: error: --span needs a value"},
      {"DEMO --span ''", "2 quintara-chart: error: --span needs a value"},
      {"DEMO --jobs 2", "2 quintara-chart: error: --jobs does not go with one ticker"},
      {"--levels A1=5,B1=7 --scale 2",
       "2 quintara-chart: error: --scale does not go with --levels"},
      {"--levels A1=5,B1=7 --list x.csv", "2 quintara-chart: error: --levels does not go with --l"},
      {"--list x.csv --output a.png", "2 quintara-chart: error: --output does not go with --list"},
      {"DEMO --into x --output a.png", "2 quintara-chart: error: --output names the picture whole"},
      {"DEMO --provider none.conf", "2 quintara-chart: error: --provider: there is no file none.c"},
      {"--list nothing.csv", "2 quintara-chart: error: nothing.csv cannot be read: No such file"},
      {"none",
       "1 quintara-chart: error: no prices for NONE. No provider was asked: there are no set"},
      {"DEMO --into /dev/null/x", "1 quintara-chart: error: "},
      {"DEMO --output /dev/full", "1 quintara-chart: error: /dev/full is no file"},
      {"--levels A1=5,B1=7 >/dev/full", "1 quintara-chart: error: standard output cannot be writ"},
      {"'DEMO&x=/../../../A'", "1 quintara-chart: error: no prices for DEMO&X=/../../../A: no tic"},
      {"'M&M'", "1 quintara-chart: error: a chart would ask for M in place of M&M"},
      {"%44EMO", "1 quintara-chart: error: a chart would ask for DEMO in place of %44EMO"},
  };
  for (const auto& [arguments, expected] : kRuns)
    EXPECT_THAT(run(arguments, "de_DE.UTF-8"), testing::StartsWith(expected)) << arguments;
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 0) << "no file for what went wrong";
}

TEST_F(Chartbook, MakesAPictureALineATableAndAPage) {
  write("watch.csv",
        "Ticker,Interval,A1,B1,C1,Show,Targets\n"
        "demo,daily,82.59,93.6,86.5,A1,A1=1:1\n<b>,\nINDEX,monthly,10000,20000\nDEMO,weekly\n"
        ",weekly\nOLD\nDEMO,daily,1,5,2,6\nDEMO,daily,82,59,93,6,,,86\n");
  fs::create_directories(folder / ".local/share/quintara/prices");
  write(".local/share/quintara/prices/OLD.csv",
        "Date,Open,High,Low,Close\n2019-10-01,1,2,1,2\n2019-10-02,1,2,1,2\n");
  EXPECT_THAT(run("--list watch.csv --into out --jobs 2", "de_DE.UTF-8"),
              testing::MatchesRegex("1 watch.csv:3: <B>: no prices for <B>. No provider [^\n]*\n"
                                    "watch.csv:6: Please enter Ticker Symbol\n"
                                    "watch.csv:7: OLD: OLD has 2 days from 1-Oct-19 to 2-Oct-19, "
                                    "but none within [^\n]*\n"
                                    "watch.csv:8: DEMO: Show lists A1 to A4, not 6\n"
                                    "watch.csv:9: DEMO: 9 columns instead of 7, [^\n]*\n"));
  const std::string comma = read("out/DEMO.png");
  const std::string levels = read("out/levels.csv");
  EXPECT_THAT(levels, HasSubstr(",A1,1.618,104.314,"));
  EXPECT_EQ(std::count(levels.begin(), levels.end(), '\n'), 1 + 6 + 3);
  const std::string page = read("out/index.html");
  for (const char* part : {"<h2>INDEX Monthly</h2>", "src=\"DEMO-2.png\"", "Line 3, &lt;B&gt;: no",
                           " bars shown, ", "A1 retracement 61.8% at 86.796"})
    EXPECT_THAT(page, HasSubstr(part));
  EXPECT_THAT(page, testing::Not(HasSubstr("<b>")));
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder / "out"))
    names.push_back(entry.path().filename());
  EXPECT_THAT(names, testing::UnorderedElementsAre("DEMO.png", "DEMO-2.png", "INDEX.png",
                                                   "levels.csv", "index.html"));
  EXPECT_THAT(run("--list watch.csv --into out"), testing::StartsWith("1 "));
  EXPECT_NE(read("out/DEMO.png"), comma) << "captions follow the locale";
  EXPECT_EQ(read("out/levels.csv"), levels) << "files do not";
}

/// Ctrl-C at a terminal, which shows the bar ten times a second, reaches every process of the list.
TEST_F(Chartbook, LeavesWholeFilesWhenItIsInterrupted) {
  std::string list = "Ticker\nNONE\n";
  for (int line = 0; line < 5000; ++line) list += "DEMO\n";
  write("watch.csv", list);
  const std::string said = shell(
      "(for i in $(seq 900); do [ -e out/DEMO-99.png ] && break; sleep 0.05; done; printf '\\003') "
      "| "
      "script -qec '" QUINTARA_CHART " --list watch.csv --into out --jobs 2' /dev/null");
  EXPECT_THAT(said, AllOf(testing::StartsWith("130 "), HasSubstr(" of 5001, 1 failed, ")));
  std::string last;
  const auto isBeingWritten = [&] {
    for (const auto& entry : fs::directory_iterator(folder / "out"))
      if ((last = entry.path().filename()).ends_with(".part")) return true;
    return false;
  };
  for (int tries = 0; isBeingWritten() && tries < 100; ++tries) usleep(100'000);
  EXPECT_FALSE(isBeingWritten()) << last;
  for (const auto& entry : fs::directory_iterator(folder / "out"))
    EXPECT_THAT(read("out/" + entry.path().filename().string()),
                testing::EndsWith("IEND\xAE\x42\x60\x82"))
        << entry.path();
}

TEST_F(Chartbook, DrawsTheExampleThatIsInstalled) {
  EXPECT_EQ(run("--list " QUINTARA_EXAMPLES "/watch.csv --labels --scale 2"), "0 ");
}

}  // namespace
}  // namespace quintara::chartbook
