#include "service/http/exchange.hpp"

#include <memory>

#include "service/http/request_rules.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

struct Destroy {
  void operator()(MHD_Response* response) const { MHD_destroy_response(response); }
};

}  // namespace

bool Exchange::mayBeAnswered(MHD_Connection* connection, const char* path, const char* method,
                             const Endpoint& endpoint) {
  method_ = method;
  try {
    checkRequest(connection, path, method, endpoint);
    return true;
  } catch (const Refusal& refusal) {
    refuse(refusal);
    return false;
  }
}

void Exchange::refuse(const Refusal& refusal) {
  body_ = std::string(refusal.what()) + "\n";
  status_ = static_cast<unsigned>(refusal.status);
}

void Exchange::ask(const Endpoint::Answer& answer, const Log& log) noexcept {
  try {
    answerBy(answer, log);
  } catch (...) {
    // No memory even to say so: the reply of the beginning stands.
  }
}

void Exchange::answerBy(const Endpoint::Answer& answer, const Log& log) try {
  body_ = answer(target_);
  type_ = "text/csv";
  status_ = MHD_HTTP_OK;
} catch (const Refusal& refusal) {
  refuse(refusal);
} catch (const std::exception& error) {
  log.error(escaped(error.what()));
}

MHD_Result Exchange::reply(MHD_Connection* connection, const Log& log) const {
  const std::unique_ptr<MHD_Response, Destroy> response(MHD_create_response_from_buffer(
      body_.size(), const_cast<char*>(body_.data()), MHD_RESPMEM_PERSISTENT));
  if (!response) {
    return MHD_NO;
  }
  const auto add = [&](const char* name, const char* value) {
    MHD_add_response_header(response.get(), name, value);
  };
  add(MHD_HTTP_HEADER_SERVER, "quintara-quotes/" QUINTARA_VERSION);
  add(MHD_HTTP_HEADER_CONTENT_TYPE, type_.c_str());
  add(MHD_HTTP_HEADER_CONNECTION, "close");
  if (status_ == MHD_HTTP_METHOD_NOT_ALLOWED) {
    add(MHD_HTTP_HEADER_ALLOW, MHD_HTTP_METHOD_GET);
  }
  log.debug(escaped(method_ + " " + target_) + " " + std::to_string(status_) + " " +
            std::to_string(body_.size()));
  return MHD_queue_response(connection, status_, response.get());
}

}  // namespace quintara::quotes
