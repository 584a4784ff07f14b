#include "chartbook/watch_list.hpp"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>

#include "service/tables/decoded_text.hpp"
#include "service/tables/plain_name.hpp"
#include "service/tables/table_rows.hpp"
#include "service/text/text.hpp"

namespace quintara::chartbook {
namespace {

using quotes::TableRows;

std::string contentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes;
  // A folder can be opened, but not read, which the stream tells by an exception of its own.
  try {
    bytes.assign(std::istreambuf_iterator<char>(file), {});
  } catch (const std::ios::failure&) {
    file.setstate(std::ios::badbit);
  }
  if (!file.is_open() || file.bad()) {
    throw BadOrder(quotes::escaped(path.string()) +
                   " cannot be read: " + std::generic_category().message(errno));
  }
  quotes::DecodedText decoded = quotes::decoded(std::move(bytes));
  if (!decoded.problem.empty()) {
    throw BadOrder(quotes::escaped(path.string()) + ": " + decoded.problem);
  }
  return std::move(decoded.text);
}

/// The field that each column holds; no value for columns of another meaning.
using Columns = std::vector<std::optional<Field>>;

Columns columnsOf(const TableRows& rows, const std::filesystem::path& file) {
  Columns columns(rows.size());
  for (std::size_t field = 0; field < kFieldCount; ++field) {
    for (std::size_t place = 0; place < rows.size(); ++place) {
      if (quotes::plainName(rows[place]) != quotes::plainName(kFieldNames.at(field))) {
        continue;
      }
      if (std::find(columns.begin(), columns.end(), static_cast<Field>(field)) != columns.end()) {
        throw BadOrder(quotes::escaped(file.string()) + " names the column " +
                       kFieldNames.at(field) + " twice");
      }
      columns.at(place) = static_cast<Field>(field);
    }
  }
  return columns;
}

bool hasTicker(const Columns& columns) {
  return std::find(columns.begin(), columns.end(), kTicker) != columns.end();
}

bool isPassedOver(const TableRows& rows) {
  return quotes::isComment(rows) || quotes::namesSeparator(rows.whole());
}

bool toHeader(TableRows& rows) {
  while (rows.next()) {
    if (!isPassedOver(rows)) {
      return true;
    }
  }
  return false;
}

Order orderOf(const TableRows& rows, const Columns& columns, const Order& usual, bool commas) {
  Order order = usual;
  order.line = rows.line();
  for (std::size_t place = 0; place < columns.size(); ++place) {
    std::string text(rows[place]);
    if (!columns.at(place) || text.empty()) {
      continue;
    }
    const Field field = *columns.at(place);
    if (commas && field >= kFirstPoint && field < kShow && text.find('.') == text.npos) {
      std::replace(text.begin(), text.end(), ',', '.');
    }
    if (field == kTicker) {
      setTicker(order, text);
    } else {
      order.fields.at(field) = text;
    }
  }
  for (std::size_t place = columns.size(); place < rows.size(); ++place) {
    if (!rows[place].empty()) {
      order.problem = std::to_string(rows.size()) + " columns instead of " +
                      std::to_string(columns.size()) +
                      ", as when a comma that belongs to a field separates two";
    }
  }
  return order;
}

}  // namespace

std::vector<Order> readWatchList(const std::filesystem::path& file, const Order& usual) {
  const std::string text = contentOf(file);
  for (const char separator : quotes::separatorsOf(text)) {
    TableRows rows(text, separator);
    const Columns columns = toHeader(rows) ? columnsOf(rows, file) : Columns();
    if (!hasTicker(columns)) {
      continue;
    }
    std::vector<Order> orders;
    while (rows.next()) {
      if (!isPassedOver(rows)) {
        orders.push_back(orderOf(rows, columns, usual, separator != ','));
      }
    }
    if (orders.empty()) {
      throw BadOrder(quotes::escaped(file.string()) + " lists no ticker");
    }
    return orders;
  }
  throw BadOrder(quotes::escaped(file.string()) + " has no column Ticker in its first line");
}

}  // namespace quintara::chartbook
