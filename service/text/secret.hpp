#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace quintara::quotes {

/// Text that must not be seen, above all an API key.
class Secret {
 public:
  Secret() = default;
  explicit Secret(std::string value) : value_(std::move(value)) {}

  const std::string& value() const { return value_; }

  /// The text with asterisks wherever the secret stands, in any case and with each character by
  /// itself, percent-encoded, behind a backslash or as a character reference. At most `longest`
  /// characters: whoever cuts the text beforehand leaves half of the secret at its end.
  std::string hiddenIn(std::string_view text, std::size_t longest = std::string::npos) const;

 private:
  std::size_t endAt(std::string_view text, std::size_t at) const;

  std::string value_;
};

}  // namespace quintara::quotes
