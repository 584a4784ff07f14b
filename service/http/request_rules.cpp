#include "service/http/request_rules.hpp"

#include <string>

#include "service/desk/refusal.hpp"
#include "service/http/host_header.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

// Why a request with this header is not answered; empty if it may be.
std::string_view refusalOf(std::string_view name, std::string_view value) {
  const auto is = [&](std::string_view other) { return equalIgnoringCase(name, other); };
  if (is("Host") && !namesThisComputer(value)) {
    return "this service answers requests to 127.0.0.1 and localhost only";
  }
  // A browser says so when a page asks; a page of another site could use up a provider's quota.
  if (is("Origin") || is("Referer") || (is("Sec-Fetch-Site") && value != "none")) {
    return "this service does not answer web pages";
  }
  return {};
}

MHD_Result look(void* found, MHD_ValueKind, const char* name, const char* value) {
  auto& refusal = *static_cast<std::string_view*>(found);
  refusal = refusalOf(name, value != nullptr ? value : "");
  return refusal.empty() ? MHD_YES : MHD_NO;
}

bool hasBody(MHD_Connection* connection) {
  const auto value = [&](const char* name) {
    return MHD_lookup_connection_value(connection, MHD_HEADER_KIND, name);
  };
  const char* length = value(MHD_HTTP_HEADER_CONTENT_LENGTH);
  return value(MHD_HTTP_HEADER_TRANSFER_ENCODING) != nullptr ||
         (length != nullptr && std::string_view(length) != "0");
}

}  // namespace

void checkRequest(MHD_Connection* connection, std::string_view path, std::string_view method,
                  const Endpoint& endpoint) {
  std::string_view refusal;
  if (endpoint.kind == Endpoint::Kind::Port) {
    MHD_get_connection_values(connection, MHD_HEADER_KIND, look, &refusal);
  }
  if (!refusal.empty()) {
    throw Refusal(MHD_HTTP_FORBIDDEN, std::string(refusal));
  }
  if (path != endpoint.path) {
    throw Refusal(MHD_HTTP_NOT_FOUND, "only " + endpoint.path + " is served here");
  }
  if (method != MHD_HTTP_METHOD_GET) {
    throw Refusal(MHD_HTTP_METHOD_NOT_ALLOWED, "only GET is served here");
  }
  if (hasBody(connection)) {
    throw Refusal(MHD_HTTP_BAD_REQUEST, "a request with a body is not understood here");
  }
}

}  // namespace quintara::quotes
