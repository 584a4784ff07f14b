#pragma once

#include <curl/curl.h>

#include <cstddef>
#include <optional>
#include <string>

#include "transfer/transfer.hpp"
#include "transfer/url_parts.hpp"

namespace quintara {

/// What a transfer receives and from where, ended as soon as it goes beyond a limit. The functions
/// are libcurl's callbacks, whose last argument is the receiver; none of them throws.
class Receiver {
 public:
  explicit Receiver(const TransferRequest& request);

  static std::size_t takeBody(char* data, std::size_t size, std::size_t count, void* receiver);
  static std::size_t takeHeader(char* data, std::size_t size, std::size_t count, void* receiver);
  static curl_socket_t open(void* receiver, curlsocktype purpose, curl_sockaddr* address);

  [[nodiscard]] const std::optional<UrlParts>& to() const { return to_; }  ///< if it is an address
  [[nodiscard]] const char* refusal() const { return refusal_; }  ///< why it was ended, or null
  [[nodiscard]] bool here() const { return here_; }               ///< as in the answer
  [[nodiscard]] std::string& body() { return body_; }

 private:
  std::size_t refuse(const char* why);

  const TransferLimits limits_;
  const bool redirected_;
  const std::optional<UrlParts> to_;
  const bool mayBeProxied_;
  const std::string tooLarge_;
  const char* refusal_ = nullptr;
  bool here_ = true;
  std::size_t lines_ = 0;
  std::size_t headerBytes_ = 0;
  std::string body_;
};

}  // namespace quintara
