#pragma once

#include <microhttpd.h>

#include <string_view>

namespace quintara::quotes {

/// Lets a request for `served` pass that was meant for this service, and throws Refusal for any
/// other: one whose Host is another computer's, which a page of that name could have made; one that
/// a page of a browser made, be it that it never sees the reply; another path; another method than
/// GET; one with a body, because no body is ever read.
void checkRequest(MHD_Connection* connection, std::string_view path, std::string_view method,
                  std::string_view served);

}  // namespace quintara::quotes
