#pragma once

#include <microhttpd.h>

#include <string>
#include <utility>

#include "service/desk/refusal.hpp"
#include "service/http/endpoint.hpp"
#include "service/system/log.hpp"

namespace quintara::quotes {

/// One request and its reply. Whatever happens there is one: an error that is nobody's fault but
/// ours is logged and becomes one, too.
class Exchange {
 public:
  explicit Exchange(std::string target) : target_(std::move(target)) {}

  /// The first look at the request: whether it is one to be answered at all. Otherwise the reply
  /// says why not.
  bool mayBeAnswered(MHD_Connection* connection, const char* path, const char* method,
                     const Endpoint& endpoint);
  /// Makes the reply; may take its time, in another thread.
  void ask(const Endpoint::Answer& answer, const Log& log) noexcept;

  /// Gives the reply to the library. It has to live until the library has completed the request.
  MHD_Result reply(MHD_Connection* connection, const Log& log) const;
  std::size_t size() const { return body_.size(); }  ///< of the reply

 private:
  void answerBy(const Endpoint::Answer& answer, const Log& log);
  void refuse(const Refusal& refusal);

  std::string method_;
  const std::string target_;  ///< as it came over the wire
  unsigned status_ = MHD_HTTP_INTERNAL_SERVER_ERROR;
  std::string type_ = "text/plain";
  std::string body_ = "the service failed; its log says why\n";
};

}  // namespace quintara::quotes
