#pragma once

#include <microhttpd.h>

#include <string_view>

#include "service/http/endpoint.hpp"

namespace quintara::quotes {

/// Lets a request pass that is one for this endpoint, and throws Refusal for any other: another
/// path, another method than GET, one with a body, because no body is ever read. On a port also one
/// whose Host is another computer's, which a page of that name could have made, and one that says
/// it comes from a page, be it that the page never sees the reply.
void checkRequest(MHD_Connection* connection, std::string_view path, std::string_view method,
                  const Endpoint& endpoint);

}  // namespace quintara::quotes
