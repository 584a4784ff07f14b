#include "service/prices/json_rows.hpp"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "service/text/lines.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

using nlohmann::json;

const json* at(const json& node, const std::string& path) {
  try {
    const json::json_pointer pointer(path);
    return node.contains(pointer) ? &node.at(pointer) : nullptr;
  } catch (const json::exception&) {
    return nullptr;  // no path, or a place in a list that is no number or a huge one
  }
}

// The field of a row, or of an object of lists; nothing if it is not there.
const json* fieldOf(const json& row, const std::string& name) {
  if (name.front() == '/') {
    return at(row, name);
  }
  if (row.is_array()) {
    const auto place = parseCount(name);
    return place && static_cast<std::size_t>(*place) < row.size()
               ? &row[static_cast<std::size_t>(*place)]
               : nullptr;
  }
  if (!row.is_object()) {
    return nullptr;
  }
  auto member = row.find(name);
  for (auto i = row.begin(); member == row.end() && i != row.end(); ++i) {
    member = equalIgnoringCase(i.key(), name) ? i : member;
  }
  return member != row.end() ? &*member : nullptr;
}

// The text of values while a row is read.
class RowText {
 public:
  void set(Column column, const json* value) {
    std::string& text = texts_.at(column);
    text.clear();
    if (value != nullptr && value->is_string()) {
      text = trimmed(value->get_ref<const std::string&>());
    } else if (value != nullptr && (value->is_number() || value->is_boolean())) {
      text = value->dump();
    }
  }
  Fields fields() const {
    Fields fields;
    std::copy(texts_.begin(), texts_.end(), fields.begin());
    return fields;
  }

 private:
  std::array<std::string, kColumns> texts_;
};

bool isSaid(const json* text) {
  return text != nullptr && text->is_string() &&
         !trimmed(text->get_ref<const std::string&>()).empty();
}

// Whether the reply says in words what became of the rows, as a used-up quota does.
bool hasMessage(const json& whole) {
  if (!whole.is_object()) {
    return false;
  }
  const json* const error = fieldOf(whole, "error");
  const bool inside = error != nullptr && error->is_object() && isSaid(fieldOf(*error, "message"));
  constexpr std::array kNames{"error", "message", "note", "information", "detail"};
  return inside || std::any_of(kNames.begin(), kNames.end(),
                               [&](const char* name) { return isSaid(fieldOf(whole, name)); });
}

// Builds the tree of a text. A number with decimals or an exponent becomes the text that it was
// written in, because a binary fraction in between would change prices. Each level takes much
// memory, and no table has many.
class TreeBuilder : public json::json_sax_t {
 public:
  bool null() override { return add(nullptr); }
  bool boolean(bool value) override { return add(value); }
  bool number_integer(number_integer_t value) override { return add(value); }
  bool number_unsigned(number_unsigned_t value) override { return add(value); }
  bool string(string_t& value) override { return add(std::move(value)); }
  bool binary(binary_t&) override { return false; }
  bool key(string_t& value) override {
    key_ = std::move(value);
    return true;
  }
  bool number_float(number_float_t, const string_t& text) override {
    std::string number = text;
    std::replace(number.begin(), number.end(), ',', '.');  // the sign of the C library's locale
    return add(std::move(number));
  }
  bool start_object(std::size_t) override { return open(json::object()); }
  bool start_array(std::size_t) override { return open(json::array()); }
  bool end_object() override { return close(); }
  bool end_array() override { return close(); }
  bool parse_error(std::size_t, const std::string&, const json::exception&) override {
    return false;
  }

  json& tree() { return tree_; }
  bool isDeep() const { return open_.size() >= kDeepest; }

 private:
  static constexpr std::size_t kDeepest = 64;

  json* place(json value) {
    if (open_.empty()) {
      return &(tree_ = std::move(value));
    }
    json& parent = *open_.back();
    if (parent.is_object()) {
      return &(parent[key_] = std::move(value));
    }
    parent.push_back(std::move(value));
    return &parent.back();
  }
  bool add(json value) { return place(std::move(value)) != nullptr; }
  bool open(json value) {
    if (isDeep()) {
      return false;
    }
    open_.push_back(place(std::move(value)));
    return true;
  }
  bool close() {
    open_.pop_back();
    return true;
  }

  json tree_{json::value_t::null};
  std::vector<json*> open_;  // from the outermost
  std::string key_;
};

constexpr std::array<Column, kColumns> kAllColumns{kDate, kOpen, kHigh, kLow, kClose, kVolume};

class JsonReader {
 public:
  explicit JsonReader(const RowRules& rules) : rules_(rules), rows_(rules, "row") {}

  PriceRows read(const json& node) {
    const json* const close = node.is_structured() ? fieldOf(node, rules_.names[kClose]) : nullptr;
    const bool row = close != nullptr && !close->is_structured();
    if (node.is_object() && close != nullptr && close->is_array()) {
      addLists(node, close->size());
    } else if (row) {
      addRow(node, nullptr);
    } else if (node.is_array() || (node.is_object() && allStructured(node))) {
      addAll(node);
    } else if (!node.is_null()) {
      return unreadable("no rows with the fields " + rules_.names[kClose] + " and so on");
    }
    return named_ || count_ == 0 ? rows_.finish()
                                 : unreadable("no row has a field " + rules_.names[kClose]);
  }

  static PriceRows unreadable(const std::string& problem) {
    PriceRows rows;
    rows.problem = escaped(problem);
    return rows;
  }

 private:
  static bool allStructured(const json& node) {
    return std::all_of(node.begin(), node.end(),
                       [](const json& row) { return row.is_structured(); });
  }

  void addAll(const json& node) {
    for (auto i = node.begin(); i != node.end(); ++i) {
      addRow(*i, node.is_object() ? &i.key() : nullptr);
    }
  }

  void addRow(const json& row, const std::string* key) {
    for (const Column column : kAllColumns) {
      text_.set(column, fieldOf(row, rules_.names.at(column)));
    }
    named_ = named_ || fieldOf(row, rules_.names[kClose]) != nullptr;
    Fields fields = text_.fields();
    if (key != nullptr && fields[kDate].empty()) {
      fields[kDate] = *key;
    }
    rows_.add(++count_, fields);
  }

  void addLists(const json& node, std::size_t size) {
    std::array<const json*, kColumns> lists{};
    for (const Column column : kAllColumns) {
      lists.at(column) = fieldOf(node, rules_.names.at(column));
    }
    named_ = true;
    for (std::size_t i = 0; i < size; ++i) {
      for (const Column column : kAllColumns) {
        const json* const list = lists.at(column);
        const bool there = list != nullptr && list->is_array() && i < list->size();
        text_.set(column, there ? &(*list)[i] : nullptr);
      }
      rows_.add(++count_, text_.fields());
    }
  }

  const RowRules& rules_;
  RowReader rows_;
  RowText text_;
  std::size_t count_ = 0;
  bool named_ = false;  // some row has the field of closes, so that these are rows of prices
};

// Text with one object a line as one list.
std::string listOfLines(std::string_view text) {
  std::string list = "[";
  while (!text.empty()) {
    const auto line = takeLine(text);
    list += (list.size() > 1 && !line.empty() ? "," : "") + std::string(line);
  }
  return list + "]";
}

}  // namespace

bool isJsonPath(const std::string& text) {
  try {
    const json::json_pointer pointer(text);
    return true;
  } catch (const json::exception&) {
    return false;
  }
}

PriceRows parseJsonRows(std::string_view text, const std::string& path, const RowRules& rules) {
  TreeBuilder builder;
  bool read = json::sax_parse(text, &builder);
  if (!read && !builder.isDeep()) {
    builder = {};
    read = json::sax_parse(listOfLines(text), &builder);
  }
  if (!read) {
    return JsonReader::unreadable(builder.isDeep() ? "nested too deeply" : "not JSON");
  }
  const json& whole = builder.tree();
  const json* const node = whole.empty() ? &whole : at(whole, path);
  if (node == nullptr) {
    return JsonReader::unreadable("nothing at " + path);
  }
  PriceRows rows = JsonReader(rules).read(*node);
  if (rows.readable && rows.isEmpty() && hasMessage(whole)) {
    return JsonReader::unreadable("no rows but a message");
  }
  return rows;
}

}  // namespace quintara::quotes
