#include <algorithm>
#include <iostream>
#include <map>
#include <set>
#include <thread>

#include "chartbook/files.hpp"
#include "chartbook/jobs.hpp"
#include "chartbook/options.hpp"
#include "chartbook/progress.hpp"
#include "chartbook/studio.hpp"
#include "chartbook/watch_list.hpp"
#include "service/text/text.hpp"

namespace {

using namespace quintara::chartbook;
namespace quotes = quintara::quotes;

constexpr int kFailed = 1;
constexpr int kBadFlag = 2;

void calculate(const Options& options) {
  quintara::NoGlyphs glyphs;
  const quotes::QuoteDesk desk({}, quotes::localToday);
  DeskClient client(desk);
  Session session(glyphs, client, quotes::localToday(), {});
  session.calculate(options.order);
  const std::vector<ReportedLevel> levels = reportedLevels(session, false);
  if (levels.empty()) {
    throw BadOrder("no levels: a set takes its start, A1 to A4, and the end of its move, B1 or B2");
  }
  if (options.json) {
    std::cout << jsonText(levels) << "\n";
    return;
  }
  for (const ReportedLevel& level : levels) {
    std::cout << level.set << " " << level.kind << " " << level.name << "\t" << level.value << "\n";
  }
}

std::string pictureName(const Order& order) { return order.fields.at(kTicker) + ".png"; }

void drawOne(const Options& options) {
  Studio studio(options);
  const Report report =
      studio.draw(options.order, options.output.empty() ? options.into / pictureName(options.order)
                                                        : options.output);
  if (options.json) {
    std::cout << "[" << jsonText(report) << "]\n";
  }
}

/// A file name for each line: a second chart of a ticker gets a number.
std::vector<std::string> pictureNames(const std::vector<Order>& orders) {
  std::set<std::string> taken;
  std::map<std::string, int> last;
  std::vector<std::string> names;
  for (const Order& order : orders) {
    const std::string& ticker = order.fields.at(kTicker);
    std::string name = pictureName(order);
    for (int& number = last.try_emplace(ticker, 1).first->second; !taken.insert(name).second;) {
      name = ticker + "-" + std::to_string(++number) + ".png";
    }
    names.push_back(name);
  }
  return names;
}

/// One line of a list in a process of its own; its failure is part of the answer.
std::string drawLine(Studio& studio, const Order& order, const std::filesystem::path& picture) {
  try {
    if (!order.problem.empty()) {
      throw BadOrder(order.problem);
    }
    return packed(studio.draw(order, picture));
  } catch (const std::exception& error) {
    return packed(failedReport(order, error.what()));
  }
}

/// Says why a line of the list has no chart.
void tell(const Options& options, const Report& report) {
  std::cerr << options.list.string() << ":" << report.line << ": "
            << (report.ticker.empty() ? "" : quotes::escaped(report.ticker) + ": ")
            << report.failure << "\n";
}

/// Draws the list; returns how many lines failed, each of which was named, in the list's order.
std::size_t drawLines(const Options& options, const std::vector<Order>& orders, Reports& reports) {
  const std::vector<std::string> names = pictureNames(orders);
  Studio studio(options);
  Progress progress(orders.size(), options.quiet);
  enum class State { Waiting, Drawn, Failed };
  std::vector<State> states(orders.size(), State::Waiting);
  std::size_t told = 0;  // lines from the beginning, those without anything to tell included
  const auto take = [&](std::size_t piece, const std::string& answer) {
    reports.put(piece, answer);
    const bool failed = !reports.at(piece).failure.empty();
    states.at(piece) = failed ? State::Failed : State::Drawn;
    for (; told < states.size() && states.at(told) != State::Waiting; ++told) {
      if (states.at(told) == State::Failed) {
        progress.clear();
        tell(options, reports.at(told));
      }
    }
    progress.step(failed);
  };
  const auto jobs = options.jobs > 0 ? static_cast<std::size_t>(options.jobs)
                                     : std::max(1U, std::thread::hardware_concurrency());
  inProcesses(
      orders.size(), jobs,
      [&](std::size_t piece) {
        return drawLine(studio, orders.at(piece), options.into / names.at(piece));
      },
      take);
  for (std::size_t piece = 0; piece < orders.size(); ++piece) {
    if (states.at(piece) == State::Waiting) {
      take(piece, packed(failedReport(orders.at(piece), "the process that drew it ended")));
    }
  }
  return static_cast<std::size_t>(std::count(states.begin(), states.end(), State::Failed));
}

int drawList(const Options& options) {
  const std::vector<Order> orders = readWatchList(options.list, options.order);
  Reports reports(orders.size());
  const std::size_t failed = drawLines(options, orders, reports);
  writeLevelsFile(options.into / "levels.csv", reports);
  writePage(options.into / "index.html", reports, quotes::localToday());
  if (options.json) {
    for (std::size_t piece = 0; piece < reports.size(); ++piece) {
      std::cout << (piece == 0 ? "[" : ",\n") << jsonText(reports.at(piece));
    }
    std::cout << "]\n";
  }
  return failed == 0 ? 0 : kFailed;
}

int run(int argc, char** argv) {
  const Options options = parseOptions(argc, argv);
  switch (options.action) {
    case Options::Action::Help:
      std::cout << helpText();
      return 0;
    case Options::Action::Version:
      std::cout << "quintara-chart " QUINTARA_VERSION "\n";
      return 0;
    case Options::Action::Levels:
      calculate(options);
      return 0;
    case Options::Action::Chart:
      drawOne(options);
      return 0;
    case Options::Action::List:
      break;
  }
  return drawList(options);
}

int complain(const std::exception& error, int code) {
  std::cerr << "quintara-chart: error: " << error.what() << "\n";
  return code;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const int code = run(argc, argv);
    if (!std::cout.flush()) {
      throw std::runtime_error("standard output cannot be written");
    }
    return code;
  } catch (const BadFlag& error) {
    complain(error, kBadFlag);
    std::cerr << "Try quintara-chart --help\n";
    return kBadFlag;
  } catch (const BadOrder& error) {
    return complain(error, kBadFlag);
  } catch (const std::exception& error) {
    return complain(error, kFailed);
  }
}
