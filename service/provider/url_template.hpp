#pragma once

#include <map>
#include <string>
#include <string_view>

namespace quintara::quotes {

/// What stands for the placeholders, by their names: {symbol} and so on.
using Filling = std::map<std::string, std::string, std::less<>>;

/// Replaces placeholders; with `encode` what stands for them is percent-encoded. Throws
/// std::invalid_argument for one that is not in the filling and for a brace that stands alone.
std::string filled(std::string_view text, const Filling& filling, bool encode);

/// An http or https address with placeholders behind the name of its host, so that no value decides
/// which computer is asked. Never shown as a whole: there may be a key in it.
class UrlTemplate {
 public:
  /// Throws std::invalid_argument that says why it is none. `example` has every placeholder.
  UrlTemplate(std::string text, const Filling& example);

  std::string filledWith(const Filling& filling) const { return filled(text_, filling, true); }
  bool names(std::string_view placeholder) const;
  const std::string& host() const { return host_; }
  bool secure() const { return secure_; }

 private:
  std::string text_;
  std::string host_;
  bool secure_ = false;
};

}  // namespace quintara::quotes
