#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quintara::quotes {

// Text that must not be seen, above all an API key.
class Secret {
 public:
  Secret() = default;
  explicit Secret(std::string value);

  const std::string& value() const { return value_; }

  // The text with asterisks wherever the secret stands, in any case and also percent-encoded. Text
  // is cut short only after this, or half of the secret might be left at its end.
  std::string hiddenIn(std::string_view text) const;

 private:
  std::string value_;
  std::vector<std::string> spellings_;
};

}  // namespace quintara::quotes
